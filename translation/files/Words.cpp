#include "files/Words.h"

#include <algorithm>
#include <set>

namespace {

constexpr WideStringView blanks = u" \t";

WideStringView Trimmed(WideStringView text) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == WideStringView::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/* gettext takes a blank for the end of a flag, too. */
bool IsOfEntries(WideStringView flag) {
    return flag == u"fuzzy" || flag == u"c-format" || flag == u"possible-c-format";
}

/* Where the reference ends that `list` begins with. */
size_t EndOfReference(WideStringView list) {
    const size_t end = list.find(u' ');
    if (list.substr(0, end).find(u'\x2068') == WideStringView::npos) return end;
    return list.find(u' ', std::min(list.find(u'\x2069'), list.size()));
}

}  // namespace

std::vector<WideString> Split(WideStringView list, WCHAR separator) {
    std::vector<WideString> parts;
    for (size_t end = 0; end != WideStringView::npos; list.remove_prefix(std::min(end + 1, list.size()))) {
        end = list.find(separator);
        const WideStringView part = Trimmed(list.substr(0, end));
        if (!part.empty()) parts.emplace_back(part);
        if (end == WideStringView::npos) break;
    }
    return parts;
}

bool HasFlag(WideStringView list, WideStringView flag) {
    const std::vector<WideString> flags = Split(list, u',');
    return std::ranges::find(flags, flag) != flags.end();
}

void AddOtherFlags(std::vector<WideString>& flags, WideStringView list) {
    for (const WideString& part : Split(list, u',')) {
        WideString flag;
        for (const WideString& word : Split(part, u' ')) {
            if (!IsOfEntries(word)) flag.append(flag.empty() ? u"" : u" ").append(word);
        }
        if (!flag.empty()) flags.push_back(flag);
    }
}

void AddReferences(std::vector<WideString>& references, WideStringView list) {
    for (list = Trimmed(list); !list.empty(); list = Trimmed(list)) {
        const size_t end = std::min(EndOfReference(list), list.size());
        references.emplace_back(list.substr(0, end));
        list.remove_prefix(end);
    }
}

void KeepOnce(std::vector<WideString>& words) {
    std::set<WideString> known;
    std::erase_if(words, [&known](const WideString& word) { return !known.insert(word).second; });
}
