/* Numbers that look random and are the same in every run. */
#pragma once

#include <cstddef>
#include <cstdint>

class Random {
public:
    explicit Random(uint64_t seed) : state(seed) {}

    /* A number from 0 to `limit` - 1. */
    size_t Below(size_t limit) { return static_cast<size_t>(Next() % limit); }

    /* A number from `least` to `most`. */
    size_t Between(size_t least, size_t most) { return least + Below(most - least + 1); }

private:
    uint64_t Next() {
        state += 0x9E3779B97F4A7C15;
        uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31);
    }

    uint64_t state;
};
