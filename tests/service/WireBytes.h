/* Bytes of requests and replies, put together without the service's own writer. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Box.h"

inline std::string Int32Bytes(int64_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

inline std::string TextBytes(std::u16string_view text) {
    std::string bytes = Int32Bytes(static_cast<int64_t>(text.size()));
    for (const char16_t unit : text)
        bytes += Int32Bytes(unit).substr(0, 2);
    return bytes;
}

inline std::string ItemBytes(const Box& box) {
    return Int32Bytes(box.south) + Int32Bytes(box.west) + Int32Bytes(box.north) + Int32Bytes(box.east);
}

inline std::string SearchBytes(const std::vector<Box>& boxes) {
    std::string bytes = Int32Bytes(101) + Int32Bytes(static_cast<int64_t>(boxes.size()));
    for (const Box& box : boxes)
        bytes += ItemBytes(box);
    return bytes;
}

inline std::string SignInBytes(std::u16string_view userId, std::u16string_view password) {
    return Int32Bytes(8) + TextBytes(userId) + TextBytes(password) + Int32Bytes(4711);
}

/* A request for an account; a test changes what it is about. */
struct Creation {
    std::u16string userId = u"anna";
    std::u16string password = u"secret1";
    std::u16string name = u"Anna Muster";
    std::u16string referrer = {};
    std::u16string email = u"anna@mail.example";
    char wantsUpdates = 1;
    int32_t vendor = 7;
    std::u16string language = u"English";

    [[nodiscard]] std::string Bytes() const {
        return Int32Bytes(10) + TextBytes(userId) + TextBytes(password) + TextBytes(name) +
               TextBytes(referrer) + TextBytes(email) + wantsUpdates + Int32Bytes(vendor) +
               TextBytes(language);
    }
};
