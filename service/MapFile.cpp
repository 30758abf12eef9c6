#include "MapFile.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

// Words go into the files with their lowest byte first, as this machine keeps them.
static_assert(std::endian::native == std::endian::little);
constexpr size_t wordSize = 8;

uint64_t HashOf(const std::string& name) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const char letter : name)
        hash = (hash ^ static_cast<uint8_t>(letter)) * 0x100000001B3;
    return hash;
}

/* Mixes the bits of a number, so that the results of neighbouring numbers have nothing in common. */
uint64_t Mixed(uint64_t number) {
    number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9;
    number = (number ^ number >> 27) * 0x94D049BB133111EB;
    return number ^ number >> 31;
}

}  // namespace

void ReadMapFile(const MapFile& file, uint64_t offset, std::span<char> bytes) {
    const uint64_t seed = HashOf(file.name);
    for (size_t filled = 0; filled < bytes.size();) {
        const uint64_t position = offset + filled;
        const uint64_t word = Mixed(seed + position / wordSize) >> position % wordSize * 8;
        const size_t count = std::min(wordSize - position % wordSize, bytes.size() - filled);
        std::memcpy(&bytes[filled], &word, count);
        filled += count;
    }
    const std::string head = "Orvande map " + file.name + ", " + std::to_string(file.size) + " bytes\n";
    if (offset < head.size()) head.copy(bytes.data(), bytes.size(), offset);
}
