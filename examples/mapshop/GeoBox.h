/* Boxes on the map, as the user writes them and as the map shop's service takes them. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/* One query item of the map shop's service: the corners of a box in units of 1e-5 degrees. */
struct GeoBox {
    int32_t south;
    int32_t west;
    int32_t north;
    int32_t east;
};
static_assert(sizeof(GeoBox) == 16);

/* The result of ParseBoxes: the boxes, or why there are none. */
struct ParsedBoxes {
    std::vector<GeoBox> boxes;
    std::wstring problem;  // empty when all is well
};

/* Reads boxes from groups of four decimal numbers in degrees: south, west, north, east. South and north lie
 * between -90 and 90 and west and east between -180 and 180; south is not greater than north. A box whose
 * west is greater than its east crosses the 180th meridian. */
ParsedBoxes ParseBoxes(const std::vector<std::wstring>& degrees);
