#include "files/PoLines.h"

#include <utility>

#include "Utf16.h"
#include "files/Words.h"

namespace {

constexpr std::string_view blanks = " \t";

std::string_view WithoutIndent(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    return line;
}

/* Obsolete messages may have the mark before their comments, too. */
std::string_view WithoutObsoleteMark(std::string_view line) {
    line = WithoutIndent(line);
    return line.starts_with("#~") ? WithoutIndent(line.substr(2)) : line;
}

bool IsReference(std::string_view line) {
    return WithoutObsoleteMark(line).starts_with("#:");
}

/* What stands behind the string that `line` begins with. */
std::string_view BehindString(std::string_view line) {
    size_t at = 1;
    while (at < line.size() && line[at] != '"')
        at += line[at] == '\\' ? size_t{2} : size_t{1};
    return line.substr(std::min(at + 1, line.size()));
}

/* How often a line says msgid outside of strings and comments. Some programs write a message in one line. */
size_t CountTexts(std::string_view line) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz_";
    size_t count = 0;
    while (!line.empty() && line.front() != '#' && line.front() != '|') {
        const size_t length = std::min(line.find_first_not_of(letters), line.size());
        if (line.substr(0, length) == "msgid") ++count;
        line = line.front() == '"' ? BehindString(line) : line.substr(std::max<size_t>(length, 1));
    }
    return count;
}

bool IsNote(std::string_view line) {
    return line == "#" || line.starts_with("# ");
}

}  // namespace

std::vector<PoMessageLines> ReadPoLines(std::string_view bytes) {
    std::vector<PoMessageLines> messages;
    PoMessageLines next;
    ForEachLine(bytes, [&](std::string_view line, size_t number) {
        line = WithoutObsoleteMark(line);
        if (line.starts_with("#,")) AddOtherFlags(next.flags, Utf16Of(line.substr(2)));
        if (IsReference(line)) AddReferences(next.references, Utf16Of(line.substr(2)));
        for (size_t count = CountTexts(line); count > 0; --count) {
            next.text = number;
            KeepOnce(next.references);
            KeepOnce(next.flags);
            messages.push_back(std::exchange(next, {}));
        }
    });
    return messages;
}

std::vector<WideString> NotesBehindMessages(std::string_view bytes) {
    std::vector<WideString> notes;
    ForEachLine(bytes, [&](std::string_view line, size_t) {
        if (IsNote(line))
            notes.push_back(Utf16Of(line.substr(std::min<size_t>(line.size(), 2))));
        else if (CountTexts(WithoutObsoleteMark(line)) > 0)
            notes.clear();
    });
    return notes;
}

std::string WithoutReferences(std::string_view bytes) {
    std::string rest;
    rest.reserve(bytes.size());
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
        rest.append(IsReference(bytes.substr(0, end)) ? "\n" : bytes.substr(0, end));
        bytes.remove_prefix(end);
    }
    return rest;
}
