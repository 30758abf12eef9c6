#include "Platform.h"

#include <string>

size_t wcslen(const WCHAR* text) {
    return std::char_traits<WCHAR>::length(text);
}

WCHAR* wcsncpy(WCHAR* destination, const WCHAR* source, size_t count) {
    size_t i = 0;
    for (; i < count && source[i] != 0; ++i)
        destination[i] = source[i];
    for (; i < count; ++i)
        destination[i] = 0;
    return destination;
}
