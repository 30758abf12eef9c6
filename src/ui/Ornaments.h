/* What texts hold beside their words. The lookup of translations does without it. */
#pragma once

#include "text/WideString.h"

/* The mark of an access key, full stops, a colon, double quotes. */
inline bool IsOrnament(WCHAR unit) {
    return unit == TEXT('&') || unit == TEXT('.') || unit == TEXT(':') || unit == TEXT('"');
}

inline WideString WithoutOrnaments(WideStringView text) {
    WideString plain(text);
    size_t length = 0;
    for (const WCHAR unit : text) {
        if (!IsOrnament(unit)) plain[length++] = unit;
    }
    plain.erase(length);
    return plain;
}
