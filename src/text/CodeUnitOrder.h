/* The order of the library's ordered containers. */
#pragma once

#include "text/WideString.h"

#include <algorithm>

/* Orders texts by their code units, an early end first. Containers with this order find text in any form that
 * can be viewed, without making a string of it. */
struct CodeUnitOrder {
    using is_transparent = void;

    bool operator()(WideStringView one, WideStringView other) const noexcept {
        const size_t common = std::min(one.size(), other.size());
        size_t at = EqualWords(one.data(), other.data(), common);
        for (; at < common; ++at) {
            if (one[at] != other[at]) return one[at] < other[at];
        }
        return one.size() < other.size();
    }

private:
    /* A machine word of units. */
    using Word = size_t;

    static bool IsAligned(const WCHAR* units) {
        return reinterpret_cast<uintptr_t>(units) % sizeof(Word) == 0;
    }

    static Word WordAt(const WCHAR* units) {
        Word word;
        memcpy(&word, __builtin_assume_aligned(units, sizeof(Word)), sizeof word);
        return word;
    }

    /* How many units at the beginning of both texts, of `count` units each, are equal as far as whole words
     * tell: texts that are compared begin alike more often than not. */
    static size_t EqualWords(const WCHAR* one, const WCHAR* other, size_t count) {
        constexpr size_t unitsPerWord = sizeof(Word) / sizeof(WCHAR);
        if (!IsAligned(one) || !IsAligned(other)) return 0;
        size_t at = 0;
        while (count - at >= unitsPerWord && WordAt(one + at) == WordAt(other + at))
            at += unitsPerWord;
        return at;
    }
};
