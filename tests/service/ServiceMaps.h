/* The files of a service's maps, where a test does not need them. */
#pragma once

#include <filesystem>
#include <fstream>

#include "Seed.h"

/* Puts empty files where the service would make those of its maps, which takes its time: it keeps them. */
inline void PlaceEmptyMaps(const std::filesystem::path& dataFolder) {
    std::filesystem::create_directories(dataFolder / "maps");
    for (const MapFile& file : FilesOfTheWorld())
        std::ofstream(dataFolder / "maps" / file.name).flush();
}
