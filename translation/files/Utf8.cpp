#include "files/Utf8.h"

#include <algorithm>
#include <cstdint>

#include "Utf16.h"

bool IsUtf8(std::string_view bytes) {
    return Utf8Of(Utf16Of(bytes)) == bytes;
}

bool IsAscii(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char byte) { return static_cast<uint8_t>(byte) < 0x80; });
}
