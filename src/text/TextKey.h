/* Texts as keys of ordered containers. Their order is that of their code units, an early end first. */
#pragma once

#include "text/WideString.h"

#include <algorithm>
#include <bit>
#include <utility>

/* As many units as the processor compares at once. */
using UnitWord = size_t;
inline constexpr size_t unitsPerWord = sizeof(UnitWord) / sizeof(WCHAR);

/* A key to be looked for: a text, and its head, which is its first units as one number. Heads are in the
 * order of the texts, and decide most comparisons without a look at these. Valid as long as the text is. */
class TextKeyView {
public:
    /* Whether `text` lies at an address from which words can be read. A string's always does. No other text
     * may be viewed. */
    static bool CanView(WideStringView text) noexcept {
        return reinterpret_cast<uintptr_t>(text.data()) % sizeof(UnitWord) == 0;
    }

    explicit TextKeyView(WideStringView whole) noexcept : text(whole), head(HeadOf(whole)) {}

    [[nodiscard]] WideStringView Text() const noexcept { return text; }
    [[nodiscard]] UnitWord Head() const noexcept { return head; }

    /* What is missing of a text counts as 0. */
    static UnitWord HeadOf(WideStringView text) noexcept {
        UnitWord head = 0;
        size_t at = 0;
        for (; at < unitsPerWord && at < text.size(); ++at)
            head = head << 16 | text[at];
        for (; at < unitsPerWord; ++at)
            head <<= 16;
        return head;
    }

private:
    WideStringView text;
    UnitWord head;
};

/* A key that owns its text. */
class TextKey {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): every text is a key
    TextKey(WideString whole) : text(std::move(whole)), head(TextKeyView::HeadOf(text)) {}
    // NOLINTNEXTLINE(google-explicit-constructor)
    TextKey(const WCHAR* whole) : TextKey(WideString(whole)) {}

    bool operator==(const TextKey& other) const noexcept = default;

    [[nodiscard]] const WideString& Text() const noexcept { return text; }
    [[nodiscard]] UnitWord Head() const noexcept { return head; }

    /* Equality has no need of the order of units: memory is compared. `other` points to units, even when it
     * has none. */
    [[nodiscard]] bool Is(WideStringView other) const noexcept {
        return text.size() == other.size() &&
               memcmp(text.data(), other.data(), other.size() * sizeof(WCHAR)) == 0;
    }

private:
    WideString text;
    UnitWord head;
};

/* Orders keys. Containers with it find a TextKeyView without making a key of it. */
struct TextKeyOrder {
    using is_transparent = void;

    template <class Key, class OtherKey>
    bool operator()(const Key& one, const OtherKey& other) const noexcept {
        if (one.Head() != other.Head()) return one.Head() < other.Head();
        return IsBeforeBehindHead(one.Text(), other.Text());
    }

private:
    /* For texts with equal heads: whatever they hold of a first word is equal. */
    static bool IsBeforeBehindHead(WideStringView one, WideStringView other) noexcept {
        const size_t common = std::min(one.size(), other.size());
        const size_t words = common / unitsPerWord;
        for (size_t word = 1; word < words; ++word) {
            const UnitWord ours = WordAt(one.data() + word * unitsPerWord);
            const UnitWord theirs = WordAt(other.data() + word * unitsPerWord);
            if (ours != theirs) return IsWordBefore(ours, theirs);
        }
        for (size_t at = words * unitsPerWord; at < common; ++at) {
            if (one[at] != other[at]) return one[at] < other[at];
        }
        return one.size() < other.size();
    }

    /* The first unit is in the lowest bits. */
    static UnitWord WordAt(const WCHAR* units) noexcept {
        UnitWord word = 0;
        memcpy(&word, __builtin_assume_aligned(units, sizeof word), sizeof word);
        return word;
    }

    /* For words that differ: their lowest unit that does so decides. */
    static bool IsWordBefore(UnitWord one, UnitWord other) noexcept {
        if constexpr (unitsPerWord == 2) {
            // Not every processor of 32 bits counts zeros.
            const auto first = static_cast<WCHAR>(one);
            const auto otherFirst = static_cast<WCHAR>(other);
            return first != otherFirst ? first < otherFirst : one < other;
        }
        const int equalBits = std::countr_zero(one ^ other) & ~15;
        return static_cast<WCHAR>(one >> equalBits) < static_cast<WCHAR>(other >> equalBits);
    }
};
