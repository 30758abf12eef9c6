#pragma once

#include "Platform.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

/* Reads the little-endian fields of a resource. Once a field does not lie within the bytes, IsGood is false
 * and every field is 0 or empty. */
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    bool IsGood() const { return isGood_; }
    size_t Position() const { return position_; }
    bool IsAtEnd() const { return position_ == bytes_.size(); }

    uint16_t Word() {
        if (!Has(2)) return 0;
        const auto low = static_cast<unsigned char>(bytes_[position_]);
        const auto high = static_cast<unsigned char>(bytes_[position_ + 1]);
        position_ += 2;
        return static_cast<uint16_t>(low | (high << 8));
    }

    int16_t Short() { return static_cast<int16_t>(Word()); }

    uint32_t Double() {
        const uint32_t low = Word();
        return low | (uint32_t{Word()} << 16);
    }

    /* Units up to a terminator, which is read, too. */
    std::u16string Text() {
        std::u16string text;
        while (const uint16_t unit = Word())
            text += static_cast<char16_t>(unit);
        return isGood_ ? text : std::u16string();
    }

    std::string_view Bytes(size_t size) {
        if (!Has(size)) return {};
        position_ += size;
        return bytes_.substr(position_ - size, size);
    }

    void Skip(size_t size) { Bytes(size); }

    /* Goes on to the next multiple of four bytes. The padding behind the last field may be missing. */
    void Align() {
        const size_t aligned = (position_ + 3) / 4 * 4;
        position_ = aligned < bytes_.size() ? aligned : bytes_.size();
    }

private:
    bool Has(size_t size) {
        isGood_ = isGood_ && size <= bytes_.size() - position_;
        return isGood_;
    }

    std::string_view bytes_;
    size_t position_ = 0;
    bool isGood_ = true;
};

}  // namespace simulator
