/* The folder that the maps' files lie in. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "MapFile.h"

/* Why the files cannot be made: one sentence for whoever started the service. */
class MapFolderError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* Makes those of the files that are missing, and the folder with them; a file that is there stays as it is.
 * Each appears under its name only when it is whole, even when this is interrupted, for example by a loss of
 * power. Processes that do this at once wait for each other. Throws MapFolderError. */
void MakeMapFiles(const std::filesystem::path& folder, std::span<const MapFile> files);

/* A file opened for reading. It can still be read when another file has taken its name. */
class MapReader {
public:
    /* None when the folder has no regular file of that name, a link included. `name` must not lead out of the
     * folder. Throws std::system_error when there is one that cannot be read. */
    static std::unique_ptr<MapReader> Open(const std::filesystem::path& folder, const std::string& name);

    MapReader(const MapReader&) = delete;
    MapReader& operator=(const MapReader&) = delete;
    ~MapReader();

    /* In bytes, when it was opened. */
    [[nodiscard]] uint64_t Size() const { return size; }

    /* Reads from `offset` on and returns the number of bytes, 0 when there are none or they cannot be read.
     * Several threads may call this at once. */
    [[nodiscard]] size_t Read(uint64_t offset, std::span<char> bytes) const;

private:
    MapReader(int opened, uint64_t sizeOfIt) : descriptor(opened), size(sizeOfIt) {}

    int descriptor;
    uint64_t size;
};
