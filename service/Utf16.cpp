#include "Utf16.h"

#include <cstdint>

namespace {

constexpr char32_t replacement = 0xFFFD;

struct Character {
    char32_t value = replacement;
    size_t length = 1;
};

size_t LengthByLead(uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

bool IsScalar(char32_t value, size_t length) {
    if (length == 3) return value >= 0x800 && (value < 0xD800 || value > 0xDFFF);
    if (length == 4) return value >= 0x10000 && value <= 0x10FFFF;
    return true;
}

/* The first character of a text that is not empty. */
Character FirstOf(std::string_view utf8) {
    const auto lead = static_cast<uint8_t>(utf8[0]);
    const size_t length = LengthByLead(lead);
    if (length == 0 || length > utf8.size()) return {};
    if (length == 1) return {lead, 1};
    char32_t value = lead & (0x7FU >> length);
    for (size_t index = 1; index < length; ++index) {
        const auto byte = static_cast<uint8_t>(utf8[index]);
        if ((byte & 0xC0) != 0x80) return {};
        value = value << 6 | (byte & 0x3F);
    }
    return IsScalar(value, length) ? Character{value, length} : Character{};
}

bool IsSurrogate(char32_t value) {
    return value >= 0xD800 && value <= 0xDFFF;
}

void AppendUtf8(std::string& bytes, char32_t value) {
    const auto append = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
    const auto appendRest = [&](unsigned shift) { append(0x80 | (value >> shift & 0x3F)); };
    if (value < 0x80) {
        append(value);
    } else if (value < 0x800) {
        append(0xC0 | value >> 6);
        appendRest(0);
    } else if (value < 0x10000) {
        append(0xE0 | value >> 12);
        appendRest(6);
        appendRest(0);
    } else {
        append(0xF0 | value >> 18);
        appendRest(12);
        appendRest(6);
        appendRest(0);
    }
}

}  // namespace

void AppendUtf16(std::u16string& units, char32_t value) {
    if (value < 0x10000) {
        units += static_cast<char16_t>(value);
    } else {
        units += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
        units += static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FF));
    }
}

std::u16string Utf16Of(std::string_view utf8) {
    std::u16string units;
    units.reserve(utf8.size());
    while (!utf8.empty()) {
        const Character character = FirstOf(utf8);
        utf8.remove_prefix(character.length);
        AppendUtf16(units, character.value);
    }
    return units;
}

std::u32string CodePointsOf(std::u16string_view units) {
    std::u32string values;
    values.reserve(units.size());
    for (const char16_t unit : units) {
        const bool isSecondHalf = unit >= 0xDC00 && unit <= 0xDFFF;
        if (isSecondHalf && !values.empty() && values.back() >= 0xD800 && values.back() <= 0xDBFF) {
            values.back() = 0x10000 + ((values.back() - 0xD800) << 10) + (unit - 0xDC00U);
        } else {
            values += unit;
        }
    }
    return values;
}

std::string Utf8Of(std::u16string_view units) {
    std::string bytes;
    for (const char32_t value : CodePointsOf(units))
        AppendUtf8(bytes, IsSurrogate(value) ? replacement : value);
    return bytes;
}
