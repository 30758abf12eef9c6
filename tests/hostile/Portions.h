/* The portions in which a message comes: what its first, second, ... read brings at most. The last one holds
 * for all further reads; none: as much as is asked for. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

using Portions = std::vector<size_t>;

/* 1 to 8 bytes at a time, 1 to 8 in turn and the other way round, and all at once, for messages of at most
 * `size` bytes. */
inline std::vector<Portions> SmallPortions(size_t size) {
    std::vector<Portions> all = {{}};
    for (size_t portion = 1; portion <= 8; ++portion)
        all.push_back({portion});
    Portions rising;
    for (size_t n = 0; n < size; ++n)
        rising.push_back(n % 8 + 1);
    Portions falling = rising;
    std::reverse(falling.begin(), falling.end());
    all.push_back(std::move(rising));
    all.push_back(std::move(falling));
    return all;
}

/* Every way to divide `size` bytes, of which there are at most a few. */
inline std::vector<Portions> EveryDivision(size_t size) {
    std::vector<Portions> all;
    const size_t borders = size > 0 ? size - 1 : 0;
    for (size_t mask = 0; mask < size_t{1} << borders; ++mask) {
        Portions portions = {1};
        for (size_t border = 0; border < borders; ++border) {
            if ((mask >> border & 1U) != 0)
                portions.push_back(1);
            else
                ++portions.back();
        }
        all.push_back(std::move(portions));
    }
    return all;
}

/* How many reads bring `bytes`, when none asks for more than `most`. */
inline size_t ReadsFor(size_t bytes, const Portions& portions, size_t most) {
    size_t reads = 0;
    for (size_t brought = 0; brought < bytes; ++reads) {
        const size_t portion = portions.empty() ? most : portions[std::min(reads, portions.size() - 1)];
        brought += std::min(portion, most);
    }
    return reads;
}
