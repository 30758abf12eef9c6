#include "text/Whitespace.h"

namespace {

bool IsWhitespace(WCHAR unit) {
    return unit == TEXT(' ') || unit == TEXT('\t') || unit == TEXT('\n') || unit == TEXT('\r');
}

}  // namespace

WideStringView WithoutOuterWhitespace(WideStringView text) {
    while (!text.empty() && IsWhitespace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsWhitespace(text.back()))
        text.remove_suffix(1);
    return text;
}

WideString& TrimWhitespace(WideString& text) {
    return text.assign(WithoutOuterWhitespace(text));
}
