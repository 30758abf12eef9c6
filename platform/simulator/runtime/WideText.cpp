#include "Platform.h"

#include <string>

size_t wcslen(const WCHAR* text) {
    return std::char_traits<WCHAR>::length(text);
}
