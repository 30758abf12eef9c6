#include "WireReader.h"

char16_t WireString::operator[](size_t index) const {
    const auto low = static_cast<uint8_t>(bytes[2 * index]);
    const auto high = static_cast<uint8_t>(bytes[2 * index + 1]);
    return static_cast<char16_t>(high << 8 | low);
}

std::u16string WireString::Text() const {
    std::u16string units;
    units.reserve(Size());
    for (size_t index = 0; index < Size(); ++index)
        units += (*this)[index];
    return units;
}

std::optional<uint8_t> WireReader::ReadByte() {
    if (rest.empty()) return std::nullopt;
    const auto value = static_cast<uint8_t>(rest[0]);
    rest.remove_prefix(1);
    return value;
}

std::optional<int32_t> WireReader::ReadInt32() {
    if (rest.size() < 4) return std::nullopt;
    uint32_t value = 0;
    for (size_t index = 4; index-- > 0;)
        value = value << 8 | static_cast<uint8_t>(rest[index]);
    rest.remove_prefix(4);
    return static_cast<int32_t>(value);
}

std::optional<WireString> WireReader::ReadString() {
    const std::string_view start = rest;
    const std::optional<int32_t> units = ReadInt32();
    if (!units || *units < 0 || *units > mostStringUnits || static_cast<size_t>(*units) > rest.size() / 2) {
        rest = start;
        return std::nullopt;
    }
    const size_t size = static_cast<size_t>(*units) * 2;
    const WireString string(rest.substr(0, size));
    rest.remove_prefix(size);
    return string;
}
