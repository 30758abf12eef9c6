#include "text/UrlEncoding.h"

#include "text/HexDigits.h"

namespace {

bool IsAsciiLetterOrDigit(WCHAR unit) {
    return (unit >= '0' && unit <= '9') || (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z');
}

bool HasLowByteThatPasses(WCHAR unit) {
    // The last of these marks is NUL: a low byte of 0 passes, too.
    static constexpr std::string_view passing("$-_.!*'()\0", 10);
    return passing.find(static_cast<char>(unit & 0xFF)) != std::string_view::npos;
}

}  // namespace

WideString UrlEncode(const WideString& text) {
    WideString encoded;
    encoded.reserve(text.size());
    for (const WCHAR unit : text) {
        if (IsAsciiLetterOrDigit(unit) || HasLowByteThatPasses(unit)) {
            encoded += unit;
        } else if (unit == ' ') {
            encoded += WCHAR{'+'};
        } else {
            encoded += WCHAR{'%'};
            AppendHexByte(encoded, static_cast<uint8_t>(unit & 0xFF));
        }
    }
    return encoded;
}

WideString UrlDecode(const WideString& text) {
    WideString decoded;
    decoded.reserve(text.size());
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '+') {
            decoded += WCHAR{' '};
            continue;
        }
        if (text[at] != '%') {
            decoded += text[at];
            continue;
        }
        if (text.size() - at < 3) break;
        const int high = HexDigitValue(text[at + 1]);
        const int low = HexDigitValue(text[at + 2]);
        if (high >= 0 && low >= 0) {
            decoded += static_cast<WCHAR>(16 * high + low);
        } else {
            decoded.append(text, at, 3);
        }
        at += 2;
    }
    return decoded;
}
