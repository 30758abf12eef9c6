/* Makes the bytes of map shop replies, good and bad ones. */
#pragma once

#include "text/WideString.h"

#include <string>

class MapShopReply {
public:
    MapShopReply& Int32(int64_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(value >> shift);
        return *this;
    }

    MapShopReply& Text(WideStringView text) { return Int32(static_cast<int64_t>(text.size())).Units(text); }

    /* Units without the length before them. */
    MapShopReply& Units(WideStringView units) {
        // Every ring's machine has the wire's order of bytes.
        bytes.append(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(WCHAR));
        return *this;
    }

    /* An entry for a map, its fields in the order of the wire. */
    MapShopReply& Map(WideStringView text1, int32_t number, WideStringView text2, WideStringView text3) {
        return Int32(4).Text(text1).Int32(number).Text(text2).Text(text3);
    }

    std::string bytes;
};
