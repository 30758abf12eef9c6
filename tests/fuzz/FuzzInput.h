/* The bytes of an input, taken apart from the front. What is asked for beyond the end is 0 or empty, so that
 * every input means something. */
#pragma once

#include "FuzzTarget.h"

#include <algorithm>
#include <string>

class FuzzInput {
public:
    explicit FuzzInput(FuzzBytes bytes) : rest(bytes) {}

    [[nodiscard]] bool IsEmpty() const { return rest.empty(); }

    uint8_t TakeByte() {
        const FuzzBytes taken = Take(1);
        return taken.empty() ? uint8_t{0} : taken.front();
    }

    /* Little-endian. */
    uint16_t TakeWord() {
        const uint8_t low = TakeByte();
        return static_cast<uint16_t>(low | TakeByte() << 8);
    }

    /* At most `most` bytes. */
    std::string TakeBytes(size_t most) {
        const FuzzBytes taken = Take(most);
        return {taken.begin(), taken.end()};
    }

    std::string TakeRest() { return TakeBytes(rest.size()); }

    /* At most `most` UTF-16 units, two bytes each; a last byte that is half a unit is taken as one below
     * U+0100. */
    std::u16string TakeUnits(size_t most) {
        std::u16string units;
        while (!IsEmpty() && units.size() < most)
            units += static_cast<char16_t>(TakeWord());
        return units;
    }

    /* The bytes up to the next zero byte, which is taken, too, or all. */
    std::string TakeLine() {
        const auto end = std::ranges::find(rest, uint8_t{0});
        std::string line = TakeBytes(static_cast<size_t>(end - rest.begin()));
        TakeByte();
        return line;
    }

private:
    FuzzBytes Take(size_t most) {
        const FuzzBytes taken = rest.first(std::min(most, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }

    FuzzBytes rest;
};
