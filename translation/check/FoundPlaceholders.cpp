#include "check/FoundPlaceholders.h"

#include <algorithm>

namespace {

/* Behind the %: flags, width, precision, size, letter. */
size_t LengthOfPlaceholder(WideStringView text) {
    size_t at = std::min(text.find_first_not_of(u"-+ #0123456789.*", 1), text.size());
    if (text.substr(at).starts_with(u"I64") || text.substr(at).starts_with(u"I32")) at += 3;
    at = std::min(text.find_first_not_of(u"hlwL", at), text.size());
    return std::min(at + 1, text.size());
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
