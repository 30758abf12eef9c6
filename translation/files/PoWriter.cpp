/* The bytes of a .po file. */
#include <algorithm>
#include <cstdio>

#include "Utf16.h"
#include "files/PoFile.h"

namespace {

/* Told by every file in UTF-8, behind the fields that gettext's own programs put before them. */
constexpr std::string_view formFields =
    "MIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\nContent-Transfer-Encoding: 8bit\n";
constexpr WideStringView fieldsBefore[] = {
    u"Project-Id-Version", u"Report-Msgid-Bugs-To", u"POT-Creation-Date", u"PO-Revision-Date",
    u"Last-Translator",    u"Language-Team",        u"Language"};

void AddEscaped(std::string& quoted, char byte) {
    constexpr std::string_view plain = "\a\b\t\n\v\f\r\"\\";
    constexpr std::string_view letters = "abtnvfr\"\\";
    const size_t at = plain.find(byte);
    if (at != std::string_view::npos) {
        quoted += '\\';
        quoted += letters[at];
    } else if (static_cast<uint8_t>(byte) < 0x20 || byte == 0x7F) {
        char octal[5] = "";
        std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned>(byte));
        quoted += octal;
    } else {
        quoted += byte;
    }
}

/* The text in double quotes, a line for each of its own. */
std::string Quoted(std::string_view text, std::string_view prefix) {
    const size_t firstEnd = text.find('\n');
    const bool isOneLine = firstEnd == std::string_view::npos || firstEnd + 1 == text.size();
    std::string quoted = isOneLine ? "" : "\"\"\n";
    do {
        const size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        if (!isOneLine) quoted.append(prefix);
        quoted += '"';
        for (const char byte : text.substr(0, end))
            AddEscaped(quoted, byte);
        quoted += "\"\n";
        text.remove_prefix(std::min(end, text.size()));
    } while (!text.empty());
    return quoted;
}

void AddString(std::string& lines, std::string_view prefix, std::string_view keyword, std::string_view text) {
    lines.append(prefix).append(keyword).append(" ").append(Quoted(text, prefix));
}

void AddComment(std::string& lines, std::string_view mark, const std::string& rest) {
    lines.append(mark).append(rest.empty() ? "" : " ").append(rest);
    // Even in a comment gettext takes it for a line that goes on.
    lines.append(rest.ends_with('\\') ? " \n" : "\n");
}

void AddComments(std::string& lines, std::string_view mark, const std::vector<WideString>& notes) {
    for (const WideString& note : notes)
        AddComment(lines, mark, Utf8Of(note));
}

bool IsFieldBefore(const CatalogueField& field) {
    return std::ranges::find(fieldsBefore, field.name) != std::end(fieldsBefore);
}

std::string FieldsOf(const Catalogue& catalogue) {
    std::string before;
    std::string behind;
    for (const CatalogueField& field : catalogue.fields)
        (IsFieldBefore(field) ? before : behind).append(Utf8Of(LineOfField(field))).append("\n");
    return before.append(formFields).append(behind);
}

void AddReferences(std::string& lines, const std::vector<WideString>& references) {
    if (references.empty()) return;
    std::string joined;
    for (const WideString& reference : references)
        joined.append(joined.empty() ? "" : " ").append(Utf8Of(reference));
    AddComment(lines, "#:", joined);
}

void AddFlags(std::string& lines, bool isFuzzy, bool isFormat, const std::vector<WideString>& others) {
    std::string joined;
    const auto add = [&joined](std::string_view flag) {
        joined.append(joined.empty() ? "" : ", ").append(flag);
    };
    if (isFuzzy) add("fuzzy");
    if (isFormat) add("c-format");
    for (const WideString& flag : others)
        add(Utf8Of(flag));
    if (!joined.empty()) AddComment(lines, "#,", joined);
}

std::string HeadOf(const Catalogue& catalogue) {
    std::string lines;
    AddComments(lines, "#", catalogue.notes);
    AddComments(lines, "#.", catalogue.places);
    AddReferences(lines, catalogue.references);
    AddFlags(lines, catalogue.isHeadFuzzy, false, catalogue.flags);
    AddString(lines, "", "msgid", "");
    AddString(lines, "", "msgstr", FieldsOf(catalogue));
    return lines;
}

/* gettext takes no screen without a text. */
void AddFormerText(std::string& lines, const CatalogueEntry& entry) {
    if (entry.guessedFrom.empty()) return;
    const std::string_view prefix = entry.isObsolete ? "#~| " : "#| ";
    if (!entry.guessedFromScreen.empty())
        AddString(lines, prefix, "msgctxt", Utf8Of(entry.guessedFromScreen));
    AddString(lines, prefix, "msgid", Utf8Of(entry.guessedFrom));
}

std::string LinesOf(const CatalogueEntry& entry) {
    std::string lines;
    AddComments(lines, "#", entry.notes);
    AddComments(lines, "#.", entry.places);
    AddReferences(lines, entry.references);
    AddFlags(lines, entry.isFuzzy, entry.isFormat, entry.flags);
    AddFormerText(lines, entry);
    const std::string_view prefix = entry.isObsolete ? "#~ " : "";
    if (!entry.screen.empty()) AddString(lines, prefix, "msgctxt", Utf8Of(entry.screen));
    AddString(lines, prefix, "msgid", Utf8Of(entry.text));
    AddString(lines, prefix, "msgstr", Utf8Of(entry.translation));
    return lines;
}

/* Complains of what no .po file holds. */
void Check(const CatalogueEntry& entry, Complaints& complaints) {
    WideString all = entry.text + u' ' + entry.translation + u' ' + entry.screen + u' ' + entry.guessedFrom +
                     u' ' + entry.guessedFromScreen;
    for (const auto& lines : {entry.notes, entry.places, entry.references, entry.flags}) {
        for (const WideString& line : lines)
            all.append(u" ").append(line);
    }
    if (Utf16Of(Utf8Of(all)) != all)
        Complain(complaints, entry.line, "half of a character pair, which UTF-8 does not have");
    // Between screen and text in gettext's own files.
    if (all.find(u'\4') != WideString::npos)
        Complain(complaints, entry.line, "a character with the number 4, which gettext does not take");
}

bool CanHoldHead(const Catalogue& catalogue) {
    WideString all;
    for (const auto& lines : {catalogue.notes, catalogue.places, catalogue.references, catalogue.flags}) {
        for (const WideString& line : lines)
            all.append(u" ").append(line);
    }
    for (const CatalogueField& field : catalogue.fields)
        all.append(u" ").append(LineOfField(field));
    return Utf16Of(Utf8Of(all)) == all && all.find(u'\4') == WideString::npos;
}

}  // namespace

std::string WritePo(const Catalogue& catalogue, Complaints& complaints) {
    if (!CanHoldHead(catalogue))
        Complain(complaints, 0, "the head holds half of a character pair, or a character with the number 4");
    std::string lines = HeadOf(catalogue);
    for (const CatalogueEntry& entry : catalogue.entries) {
        Check(entry, complaints);
        lines.append("\n").append(LinesOf(entry));
    }
    return lines;
}
