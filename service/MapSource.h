/* Where a new catalogue gets its maps from. */
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "MapRecord.h"

struct MapSource {
    /* What it holds, in words ("25 made-up maps"). A catalogue remembers it, and can be opened only with a
     * source of the same contents. */
    std::string contents;
    int32_t count = 0;
    /* The map at a position from 0 to count - 1; always the same one. */
    std::function<MapRecord(int32_t position)> at;
};
