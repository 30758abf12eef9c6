/* Lines of tables and their fields, as the library reads them and as they are meant. */
#include <stdio.h>

#include <algorithm>
#include <new>

#include "files/OpenedFile.h"
#include "files/TableFile.h"
#include "ui/TranslationFile.h"

namespace {

constexpr WCHAR quote = u'"';
constexpr WCHAR backslash = u'\\';

/* The first unit of `raw` and what belongs to it for the library. */
size_t LengthOfFirst(WideStringView raw) {
    if (raw.size() < 2) return 1;
    const bool isPair = raw[0] == backslash || (raw[0] == quote && raw[1] == quote);
    return isPair ? 2 : 1;
}

/* Where the library first drops a double quote; npos: nowhere. */
size_t FindBareQuote(WideStringView raw) {
    for (size_t at = 0; at < raw.size(); at += LengthOfFirst(raw.substr(at))) {
        if (raw[at] == quote && LengthOfFirst(raw.substr(at)) == 1) return at;
    }
    return WideStringView::npos;
}

/* Whether what stands within the first and the last unit ends before the last, and not with a backslash that
 * belongs to it. */
bool IsEnclosed(WideStringView raw) {
    if (raw.size() < 2 || raw.front() != quote || raw.back() != quote) return false;
    raw.remove_prefix(1);
    while (raw.size() > 1)
        raw.remove_prefix(std::min(raw[0] == backslash ? size_t{2} : size_t{1}, raw.size()));
    return !raw.empty();
}

WideStringView WithoutEnds(WideStringView raw) {
    return raw.substr(1, raw.size() - 2);
}

/* Whether the first bare quote of `raw` stands before a word: then it is not the end of one that began before
 * `raw`. */
bool DoesBareQuoteOpen(WideStringView raw) {
    const size_t at = FindBareQuote(raw);
    return at == 0 || raw[at - 1] == u' ' || raw[at - 1] == u'(';
}

WideStringView WithoutLineEnd(WideStringView line) {
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    return line;
}

/* The table that the library makes of one line. */
TranslationTable ReadByLibrary(WideStringView line) {
    WideString file(1, u'\xFEFF');
    file.append(line);
    const OpenedFile opened(fmemopen(file.data(), file.size() * sizeof(WCHAR), "rb"));
    if (opened == nullptr) throw std::bad_alloc();
    TranslationTable table;
    ReadTranslations(opened.get(), table);
    return table;
}

}  // namespace

std::optional<TableRecord> ReadTableRecord(WideStringView line) {
    if (line.find(u'\t') == WideStringView::npos) return std::nullopt;
    const TranslationTable table = ReadByLibrary(line);
    if (table.empty()) return std::nullopt;
    WideStringView rest = WithoutLineEnd(line);
    rest.remove_prefix(rest.find_first_not_of(u'\t'));
    const size_t tab = rest.find(u'\t');
    const auto& [text, translation] = *table.begin();
    return TableRecord{rest.substr(0, tab), rest.substr(tab + 1), text.Text(), translation};
}

bool IsTableComment(WideStringView line) {
    if (line.starts_with(quote)) line.remove_prefix(1);
    if (!line.starts_with(u'#')) return false;
    const size_t tab = line.find(u'\t');
    return tab == WideStringView::npos || line.find_first_not_of(u"\t\r", tab) == WideStringView::npos;
}

bool AreQuotesKept(WideStringView raw) {
    if (IsEnclosed(raw)) raw = WithoutEnds(raw);
    return FindBareQuote(raw) == WideStringView::npos;
}

WideString MeantText(WideStringView raw) {
    if (AreQuotesKept(raw)) return UnescapeTranslationText(raw);
    if (IsEnclosed(raw) && DoesBareQuoteOpen(WithoutEnds(raw))) raw = WithoutEnds(raw);
    WideString doubled;
    for (size_t length = 0; !raw.empty(); raw.remove_prefix(length)) {
        length = LengthOfFirst(raw);
        doubled.append(raw.substr(0, length));
        if (raw[0] == quote && length == 1) doubled += quote;
    }
    return UnescapeTranslationText(doubled);
}

WideString HarvestedText(WideStringView raw) {
    WideString text;
    for (size_t at = 0; at < raw.size(); ++at) {
        const WideStringView pair = raw.substr(at, 2);
        const bool isEscape = pair == u"\\t" || pair == u"\\n";
        text += !isEscape ? raw[at] : pair[1] == u't' ? u'\t' : u'\n';
        if (isEscape) ++at;
    }
    return text;
}

WideString EscapedText(WideStringView text) {
    // In a field of nothing but quotes the enclosing ones would make a pair with the others.
    const bool isAllQuotes = text.find_first_not_of(quote) == WideStringView::npos;
    WideString escaped;
    for (const WCHAR unit : text) {
        if (unit == quote)
            escaped.append(isAllQuotes ? u"\\\"" : u"\"\"");
        else if (unit == backslash)
            escaped.append(u"\\\\");
        else if (unit == u'\t')
            escaped.append(u"\\t");
        else if (unit == u'\n')
            escaped.append(u"\\n");
        else
            escaped += unit;
    }
    const bool isEnclosed = !isAllQuotes && text.find(quote) != WideStringView::npos;
    return isEnclosed ? quote + escaped + quote : escaped;
}
