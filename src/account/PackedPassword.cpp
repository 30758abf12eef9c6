#include "account/PackedPassword.h"

#include <algorithm>

namespace {

// Settings that were saved with one key can only be read with the same key.
constexpr PackedPassword scramblingKey = {0x5B, 0xC4, 0x1E, 0x97, 0x36, 0xE8, 0x6D, 0x02,
                                          0xAF, 0x73, 0xD9, 0x48, 0x8C, 0x21, 0xF5, 0xBA};

constexpr uint8_t firstDigit = 1;
constexpr uint8_t firstLetter = 11;
constexpr uint8_t lastLetter = 36;

/* The code of a letter or digit, whatever the letter's case; 0 for any other unit. */
uint8_t CodeOf(WCHAR unit) {
    const auto from = [unit](WCHAR first, uint8_t code) { return static_cast<uint8_t>(unit - first + code); };
    if (unit >= '0' && unit <= '9') return from('0', firstDigit);
    if (unit >= 'A' && unit <= 'Z') return from('A', firstLetter);
    if (unit >= 'a' && unit <= 'z') return from('a', firstLetter);
    return 0;
}

/* The digit or lower-case letter of a code; 0 when there is none. */
WCHAR UnitOf(uint8_t code) {
    if (code < firstDigit || code > lastLetter) return 0;
    if (code < firstLetter) return static_cast<WCHAR>('0' + code - firstDigit);
    return static_cast<WCHAR>('a' + code - firstLetter);
}

}  // namespace

PackedPassword PackPassword(WideStringView password) {
    PackedPassword packed = scramblingKey;
    size_t stored = 0;
    for (const WCHAR unit : password) {
        const uint8_t code = CodeOf(unit);
        if (code == 0) continue;
        packed[stored++] ^= code;
        if (stored == packed.size()) break;
    }
    return packed;
}

WideString UnpackPassword(const PackedPassword& packed, size_t count) {
    WideString password;
    password.reserve(packed.size());
    for (size_t i = 0; i < std::min(count, packed.size()); ++i) {
        const WCHAR unit = UnitOf(packed[i] ^ scramblingKey[i]);
        if (unit != 0) password.push_back(unit);
    }
    return password;
}
