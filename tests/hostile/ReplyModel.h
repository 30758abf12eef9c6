/* What a reply of the service says, by the rules of docs/wire-format.md and LMOnline.h. All of its bytes are
 * at hand here, which the library gets from one read after the other. */
#pragma once

#include "Platform.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "LMOnline.h"

/* Which bytes come, and what happens behind them. */
struct Arrival {
    std::string_view bytes;
    DWORD atEnd = LM_ERROR_REPLY_ENDED;  // what a read tells for which no byte is left
    size_t gapAt = SIZE_MAX;             // before this byte one read brings nothing,
    DWORD atGap = 0;                     // and tells this
    DWORD httpStatus = 200;
};

class ReplyModel {
public:
    explicit ReplyModel(const Arrival& whatArrives) : arrival(whatArrives) {}

    /* Of `value` those bytes are replaced that come. */
    int32_t Int32(int32_t value) {
        const std::string_view taken = Take(4);
        auto bits = static_cast<uint32_t>(value);
        for (size_t n = taken.size(); n-- > 0;) {
            const uint32_t eightBits = static_cast<uint8_t>(taken[n]);
            bits = (bits & ~(0xFFU << 8 * n)) | eightBits << 8 * n;
        }
        return static_cast<int32_t>(bits);
    }

    /* What a field keeps of a string: the units before its first NUL, `most` of them. */
    std::u16string Text(size_t most) {
        const int32_t length = Int32(0);
        std::u16string text;
        if (!isGood) return text;
        isReadable = isReadable && length >= 0 && length <= 100000;
        if (length < 0 || length > 100000) return text;
        for (int32_t n = 0; n < length && isGood; ++n) {
            const std::string_view unit = Take(2);
            const unsigned high = unit.size() == 2 ? static_cast<uint8_t>(unit[1]) : 0U;
            if (isGood) text += static_cast<char16_t>(static_cast<uint8_t>(unit[0]) | high << 8U);
        }
        return text.substr(0, std::min(text.find(u'\0'), most));
    }

    /* Why not all was done, when `status` is what the reply began with. */
    [[nodiscard]] DWORD CauseOf(int32_t status) const {
        if (firstCause == 0 && status == 0) return isReadable ? 0U : DWORD{ERROR_INVALID_DATA};
        if (arrival.httpStatus >= 300) return 0x21000000U + arrival.httpStatus;
        if (firstCause != 0) return firstCause;
        return 0x22000000U + (static_cast<uint32_t>(status) & 0xFFFFFFU);
    }

    bool isGood = true;      // each read has found a byte
    bool isReadable = true;  // no string had a length that none has
    bool foundAny = false;   // the last read has found a byte
    size_t consumed = 0;     // bytes
    size_t shortfalls = 0;   // reads that did not find all their bytes: each asks the network once in vain
    DWORD firstCause = 0;    // of these

private:
    std::string_view Take(size_t size) {
        size_t end = arrival.bytes.size();
        const bool meetsGap = isBeforeGap && arrival.gapAt < consumed + size && arrival.gapAt <= end;
        if (meetsGap) end = arrival.gapAt;
        const std::string_view taken = arrival.bytes.substr(consumed, std::min(size, end - consumed));
        consumed += taken.size();
        foundAny = !taken.empty();
        isGood = isGood && foundAny;
        if (taken.size() == size) return taken;
        if (meetsGap) isBeforeGap = false;
        ++shortfalls;
        if (firstCause == 0) firstCause = meetsGap ? arrival.atGap : arrival.atEnd;
        return taken;
    }

    Arrival arrival;
    bool isBeforeGap = true;
};
