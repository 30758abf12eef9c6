/* What is in the files of the maps: contents that anyone can compute, to check a download of any part. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

struct MapFile {
    std::string name;  // "reunion.map"
    uint64_t size = 0;
};

/* Fills all of `bytes` with the file's bytes from `offset` on. A file begins with a line that names the map
 * and its size; after that comes noise computed from the name, as docs/service.md describes. Beyond the size
 * the noise goes on. */
void ReadMapFile(const MapFile& file, uint64_t offset, std::span<char> bytes);
