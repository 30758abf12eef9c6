/* Reads the values of a service's reply as docs/wire-format.md tells it, with all of its bytes at hand: what
 * targets compare the library's reading with, which gets them portion by portion. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

class ReplyReading {
public:
    explicit ReplyReading(std::string_view bytes) : rest(bytes) {}

    /* `value` with the bytes that are there. One of which none are is a failed read. */
    int32_t Int32(int32_t value) {
        auto number = static_cast<uint32_t>(value);
        const std::string_view taken = Take(4);
        for (size_t at = 0; at < taken.size(); ++at) {
            const auto shift = static_cast<unsigned>(8 * at);
            number &= ~(0xFFU << shift);
            number |= static_cast<uint32_t>(static_cast<uint8_t>(taken[at])) << shift;
        }
        return static_cast<int32_t>(number);
    }

    /* A string as a field of a record keeps it: up to its first U+0000, at most `most` units. */
    std::u16string Text(size_t most) {
        const int32_t length = Int32(0);
        if (!isGood) return {};
        if (length < 0 || length > 100000) {
            isReadable = false;
            return {};
        }
        std::u16string text;
        for (int32_t unit = 0; unit < length && isGood; ++unit)
            text += Unit();
        if (!isGood) isReadable = false;
        text.resize(std::min({text.size(), most, text.find(u'\0')}));
        return text;
    }

    /* Whether every read so far has found at least a byte. */
    [[nodiscard]] bool IsGood() const { return isGood; }

    /* Whether every read so far has found all its bytes. */
    [[nodiscard]] bool IsWhole() const { return isWhole; }

    /* Whether no string had a length that no string has. */
    [[nodiscard]] bool IsReadable() const { return isReadable; }

    /* Whether the last read has found a byte. */
    [[nodiscard]] bool FoundAny() const { return foundAny; }

private:
    std::string_view Take(size_t size) {
        const std::string_view taken = rest.substr(0, size);
        rest.remove_prefix(taken.size());
        foundAny = !taken.empty();
        isGood = isGood && foundAny;
        isWhole = isWhole && taken.size() == size;
        return taken;
    }

    char16_t Unit() {
        const std::string_view taken = Take(2);
        const unsigned low = taken.empty() ? 0U : static_cast<uint8_t>(taken[0]);
        const unsigned high = taken.size() < 2 ? 0U : static_cast<uint8_t>(taken[1]);
        return static_cast<char16_t>(low | high << 8);
    }

    std::string_view rest;
    bool isGood = true;
    bool isWhole = true;
    bool isReadable = true;
    bool foundAny = false;
};
