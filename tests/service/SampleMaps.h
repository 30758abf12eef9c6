/* Small catalogues for tests. */
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "MapSource.h"

/* A map with a path and texts that follow from its name. */
inline MapRecord SampleMap(const std::string& name, const Box& box) {
    return {name, 7, "/maps/" + name + ".map", "About " + name, box};
}

inline MapSource SourceOf(std::vector<MapRecord> maps) {
    const auto count = static_cast<int32_t>(maps.size());
    return {"sample maps", count,
            [maps = std::move(maps)](int32_t position) { return maps.at(static_cast<size_t>(position)); }};
}

inline std::vector<std::string> NamesOf(const std::vector<MapRecord>& maps) {
    std::vector<std::string> names;
    names.reserve(maps.size());
    for (const MapRecord& map : maps)
        names.push_back(map.name);
    return names;
}
