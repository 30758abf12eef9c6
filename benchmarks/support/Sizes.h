/* The sizes that more than one row is measured with. */
#pragma once

#include <array>
#include <cstddef>

inline constexpr std::array<size_t, 2> catalogueSizes = {2000, 20000};
inline constexpr std::array<size_t, 4> growthSizes = {1000, 3000, 30000, 100000};
inline constexpr std::array<size_t, 3> keyValueSizes = {20, 200, 2000};
inline constexpr std::array<size_t, 2> encodingSizes = {24, 4096};
inline constexpr std::array<size_t, 1> replySizes = {10000};
