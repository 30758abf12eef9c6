#include "text/Whitespace.h"

WideString& TrimWhitespace(WideString& text) {
    static constexpr const WCHAR* whitespace = TEXT(" \t\n\r");
    text.erase(0, text.find_first_not_of(whitespace));
    const size_t last = text.find_last_not_of(whitespace);
    return last == WideString::npos ? text : text.erase(last + 1);
}
