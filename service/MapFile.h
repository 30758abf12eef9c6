/* What is in the files of the maps: contents that anyone can compute again, to check a download of any
 * part. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

struct MapFile {
    std::string name;  // "reunion.map"
    uint64_t size = 0;
};

/* Puts the bytes from `offset` on into all of `bytes`. A line that names the map and its size comes first,
 * noise that follows from the name after it; docs/service.md gives the rule. What is asked for beyond the
 * size is the noise going on. */
void ReadMapFile(const MapFile& file, uint64_t offset, std::span<char> bytes);
