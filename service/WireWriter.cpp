#include "WireWriter.h"

#include <utility>

#include "Utf16.h"

void WireWriter::WriteInt32(int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    for (uint32_t shift = 0; shift < 32; shift += 8)
        WriteByte(bits >> shift);
}

void WireWriter::WriteString(std::string_view utf8) {
    const std::u16string units = Utf16Of(utf8);
    WriteInt32(static_cast<int32_t>(units.size()));
    for (const char16_t unit : units) {
        WriteByte(unit);
        WriteByte(static_cast<uint32_t>(unit) >> 8);
    }
}

std::string WireWriter::TakeBytes() {
    return std::exchange(bytes, {});
}
