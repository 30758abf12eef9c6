#include "check/Mentions.h"

#include <algorithm>

namespace {

constexpr WideStringView pathMark = u" / ";

bool IsName(const ShownText& text) {
    return std::ranges::any_of(text.places, [](const TextPlace& place) {
        return place.kind == TextKind::SoftKey || place.kind == TextKind::MenuItem;
    });
}

bool IsLetter(WideStringView text, size_t at) {
    if (at >= text.size()) return false;
    const WCHAR unit = text[at];
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9');
}

bool AreWholeWords(WideStringView text, size_t begin, size_t end) {
    return (begin == 0 || !IsLetter(text, begin - 1)) && !IsLetter(text, end);
}

bool IsInQuotes(WideStringView text, size_t begin, size_t end) {
    const auto quotes = std::ranges::count(text.substr(0, begin), u'"');
    return quotes % 2 == 1 && text.find(u'"', end) != WideStringView::npos;
}

bool IsInPath(WideStringView text, size_t begin, size_t end) {
    return text.substr(0, begin).ends_with(pathMark) || text.substr(end).starts_with(pathMark);
}

size_t EndOf(const Mention& mention) {
    return mention.begin + WideStringView(mention.name->text).size();
}

/* "Account" in "New Account", when there are both names. */
bool IsWithin(const Mention& inner, const Mention& outer) {
    return inner.name != outer.name && outer.begin <= inner.begin && EndOf(inner) <= EndOf(outer);
}

}  // namespace

std::vector<Mention> FindMentions(WideStringView text) {
    std::vector<Mention> all;
    for (const ShownText& shown : AllShownTexts()) {
        const WideStringView name = shown.text;
        if (!IsName(shown) || name == text) continue;
        for (size_t at = text.find(name); at != WideStringView::npos; at = text.find(name, at + 1)) {
            const size_t end = at + name.size();
            if (AreWholeWords(text, at, end) && (IsInQuotes(text, at, end) || IsInPath(text, at, end)))
                all.push_back({&shown, at});
        }
    }
    std::vector<Mention> found;
    std::ranges::copy_if(all, std::back_inserter(found), [&all](const Mention& mention) {
        return std::ranges::none_of(all,
                                    [&mention](const Mention& other) { return IsWithin(mention, other); });
    });
    std::ranges::sort(found, {}, &Mention::begin);
    return found;
}
