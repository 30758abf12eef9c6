#include "check/FoundPlaceholders.h"

#include <algorithm>

namespace {

/* Behind the %: flags, width, precision, size, letter; those of other runtimes, too. */
size_t LengthOfPlaceholder(WideStringView text) {
    size_t at = std::min(text.find_first_not_of(u"-+ #0123456789.*$'", 1), text.size());
    if (text.substr(at).starts_with(u"I64") || text.substr(at).starts_with(u"I32")) at += 3;
    at = std::min(text.find_first_not_of(u"hlwLIjzt", at), text.size());
    const bool isPair = at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
    return std::min(at + (isPair ? 2 : 1), text.size());
}

}  // namespace

std::vector<WideStringView> FindPlaceholders(WideStringView format) {
    std::vector<WideStringView> found;
    size_t at = format.find(u'%');
    while (at != WideStringView::npos) {
        const size_t length = LengthOfPlaceholder(format.substr(at));
        found.push_back(format.substr(at, length));
        at = format.find(u'%', at + length);
    }
    return found;
}
