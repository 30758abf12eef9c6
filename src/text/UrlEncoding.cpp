#include "text/UrlEncoding.h"

WideString UrlEncode(WideStringView text) {
    WideString encoded;
    // Units gather here: a string that grows by single ones looks each time whether it still has room.
    WCHAR units[128];
    size_t count = 0;
    PutUrlEncoded(text, [&](WCHAR unit) {
        if (count == std::size(units)) {
            encoded.append(units, count);
            count = 0;
        }
        units[count++] = unit;
    });
    encoded.append(units, count);
    return encoded;
}

WideString UrlDecode(WideStringView text) {
    // Decoding never makes text longer.
    WideString decoded(text);
    size_t length = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        WCHAR unit = text[at];
        if (unit == TEXT('+')) {
            unit = TEXT(' ');
        } else if (unit == TEXT('%')) {
            if (text.size() - at < 3) break;
            const int high = HexDigitValue(text[at + 1]);
            const int low = HexDigitValue(text[at + 2]);
            if (high >= 0 && low >= 0) {
                unit = static_cast<WCHAR>(16 * high + low);
            } else {
                decoded[length++] = unit;
                decoded[length++] = text[at + 1];
                unit = text[at + 2];
            }
            at += 2;
        }
        decoded[length++] = unit;
    }
    decoded.erase(length);
    return decoded;
}
