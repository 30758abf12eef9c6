#include "MadeUpMaps.h"

#include <array>
#include <cstdio>

namespace {

constexpr int32_t cellsPerRow = 1000;
constexpr int32_t cellHeight = 2 * pole / (mostMadeUpMaps / cellsPerRow);
constexpr int32_t cellWidth = 2 * antimeridian / cellsPerRow;

// Shares no divisor with the number of cells, so that no two maps get the same one.
constexpr int64_t stride = 611953;

Box CellOf(int32_t position) {
    const auto cell = static_cast<int32_t>(position * stride % mostMadeUpMaps);
    const int32_t south = -pole + cell / cellsPerRow * cellHeight;
    const int32_t west = -antimeridian + cell % cellsPerRow * cellWidth;
    return {south, west, south + cellHeight, west + cellWidth};
}

MapRecord MadeUpMap(int32_t position, int32_t count) {
    const int32_t number = position + 1;
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%07d", number);
    MapRecord map;
    map.name = std::string("Made-up map ") + digits.data();
    map.kilobytes = static_cast<int32_t>(100 + number * int64_t{7919} % 60000);
    map.path = std::string("/maps/made-up/") + digits.data() + ".map";
    map.description =
        "Map " + std::to_string(number) + " of " + std::to_string(count) + ", made up for large searches.";
    map.box = CellOf(position);
    return map;
}

}  // namespace

MapSource MadeUpMaps(int32_t count) {
    return {std::to_string(count) + " made-up maps", count,
            [count](int32_t position) { return MadeUpMap(position, count); }};
}
