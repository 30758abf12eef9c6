#include "files/Harvest.h"

#include <algorithm>

#include "files/TableFile.h"

namespace {

constexpr WideStringView untranslated = u"XXXX";

WideStringView WithoutReturns(WideStringView line) {
    return line.substr(0, line.find_last_not_of(u'\r') + 1);
}

/* Editors leave some at the end. */
bool IsEmpty(WideStringView line) {
    return WithoutReturns(line).empty();
}

struct HarvestLine {
    WideStringView raw; /* what stands before the TAB; empty: the line is none of a harvest */
    WideStringView translation;
};

HarvestLine TakenApart(WideStringView line) {
    line = WithoutReturns(line);
    const size_t tab = line.find(u'\t');
    if (tab == WideStringView::npos || IsTableComment(line)) return {};
    return {line.substr(0, tab), line.substr(tab + 1)};
}

/* Whether quotes are doubled between two more, in a line that does not end as the library ends them: this is
 * a table then, of which nothing but its records is left. */
bool IsOfTable(WideStringView line, WideStringView raw) {
    return !line.ends_with(u'\r') && raw.starts_with(u'"') && raw == EscapedText(MeantText(raw));
}

/* What the library has written as `raw`, next in its order behind `last`. A backslash before a t or an n may
 * be an escape or a part of the text, of which the order knows sometimes. Empty: it is none, or out of
 * order. */
WideString NextText(WideStringView raw, const WideString& last) {
    WideString text = HarvestedText(raw);
    if (text > last) return text;
    return raw > last ? WideString(raw) : WideString();
}

}  // namespace

bool IsRawHarvest(const std::vector<WideString>& lines) {
    return std::ranges::all_of(
               lines, [](const WideString& line) { return TakenApart(line).translation == untranslated; }) &&
           !TextsOfHarvest(lines).empty();
}

std::vector<WideString> TextsOfHarvest(const std::vector<WideString>& lines) {
    std::vector<WideString> texts;
    WideString last;
    bool isUntouched = true;
    bool hasBareQuote = false;
    for (const WideString& line : lines) {
        texts.emplace_back();
        if (IsEmpty(line)) continue;
        const auto [raw, translation] = TakenApart(line);
        texts.back() = NextText(raw, last);
        if (texts.back().empty() || IsOfTable(line, raw)) return {};
        last = texts.back();
        isUntouched = isUntouched && translation == untranslated;
        hasBareQuote = hasBareQuote || (!AreQuotesKept(raw) && raw != u"\"");
    }
    // Once it is edited, only quotes that the library would drop tell it from a language file.
    return isUntouched || hasBareQuote ? texts : std::vector<WideString>();
}
