/* Texts as keys of ordered containers. Their order is that of their code units, an early end first. */
#pragma once

#include "text/WideString.h"

#include <algorithm>
#include <bit>
#include <utility>

/* As many units as the processor compares at once. */
using UnitWord = size_t;
inline constexpr size_t unitsPerWord = sizeof(UnitWord) / sizeof(WCHAR);

/* A key to be looked for: the text, and its first units as one number, in whose order they are. Most
 * comparisons are decided by that number, without a look at the texts. Valid as long as the text is. */
struct TextKeyView {
    explicit TextKeyView(WideStringView whole) noexcept : head(HeadOf(whole)), text(whole) {}
    TextKeyView(UnitWord known, WideStringView whole) noexcept : head(known), text(whole) {}

    UnitWord head;
    WideStringView text;

private:
    static UnitWord HeadOf(WideStringView text) noexcept {
        UnitWord head = 0;
        size_t at = 0;
        for (const size_t units = std::min(text.size(), unitsPerWord); at < units; ++at)
            head = head << 16 | text[at];
        for (; at < unitsPerWord; ++at)
            head <<= 16;
        return head;
    }
};

/* A key that owns its text. */
class TextKey {
public:
    TextKey(WideString whole) : text(std::move(whole)), head(TextKeyView(text).head) {}
    TextKey(const WCHAR* whole) : TextKey(WideString(whole)) {}

    operator TextKeyView() const noexcept { return {head, text}; }

    [[nodiscard]] const WideString& Text() const noexcept { return text; }

    bool operator==(const TextKey& other) const noexcept = default;

    /* Equality has no need of the order of units: memory is compared. */
    [[nodiscard]] bool Is(WideStringView other) const noexcept {
        return std::equal(text.data(), text.data() + text.size(), other.begin(), other.end());
    }

private:
    WideString text;
    UnitWord head;
};

/* Orders keys. Containers with it find a TextKeyView without making a key of it. */
struct TextKeyOrder {
    using is_transparent = void;

    bool operator()(const TextKeyView& one, const TextKeyView& other) const noexcept {
        if (one.head != other.head) return one.head < other.head;
        return IsBeforeBehindHead(one.text, other.text);
    }

private:
    /* For texts with equal heads: whatever they hold of a first word is equal. */
    static bool IsBeforeBehindHead(WideStringView one, WideStringView other) noexcept {
        const size_t common = std::min(one.size(), other.size());
        for (size_t word = 1; word < common / unitsPerWord; ++word) {
            const UnitWord ours = WordAt(one.data() + word * unitsPerWord);
            const UnitWord theirs = WordAt(other.data() + word * unitsPerWord);
            if (ours != theirs) return IsWordBefore(ours, theirs);
        }
        for (size_t at = common / unitsPerWord * unitsPerWord; at < common; ++at) {
            if (one[at] != other[at]) return one[at] < other[at];
        }
        return one.size() < other.size();
    }

    static UnitWord WordAt(const WCHAR* units) noexcept {
        UnitWord word;
        memcpy(&word, units, sizeof word);
        return word;
    }

    /* For words that differ: their first unit is in the lowest bits. */
    static bool IsWordBefore(UnitWord one, UnitWord other) noexcept {
        const int equalBits = std::countr_zero(one ^ other) & ~15;
        return static_cast<WCHAR>(one >> equalBits) < static_cast<WCHAR>(other >> equalBits);
    }
};
