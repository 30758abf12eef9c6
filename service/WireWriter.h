/* The values of a reply body, written one after another. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class WireWriter {
public:
    /* 4 bytes, little-endian, two's complement. */
    void WriteInt32(int32_t value);

    /* The number of UTF-16 code units as an int32, then each unit as 2 bytes, little-endian. `utf8` is UTF-8;
     * what is not well-formed in it travels as U+FFFD. */
    void WriteString(std::string_view utf8);

    /* Hands over the bytes written; the writer is empty afterwards. */
    [[nodiscard]] std::string TakeBytes();

private:
    void WriteByte(uint32_t value) { bytes += static_cast<char>(value & 0xFF); }

    std::string bytes;
};
