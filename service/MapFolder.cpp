#include "MapFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

namespace {

constexpr size_t pieceSize = 1 << 20;

[[noreturn]] void Fail(const std::filesystem::path& path, const char* what, int error) {
    throw MapFolderError("'" + path.string() + "' cannot be " + what + ": " +
                         std::generic_category().message(error));
}

class Descriptor {
public:
    explicit Descriptor(int opened) : descriptor(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (descriptor >= 0) close(descriptor);
    }

    [[nodiscard]] int Get() const { return descriptor; }
    int Release() { return std::exchange(descriptor, -1); }

private:
    int descriptor;
};

bool WriteWhole(int descriptor, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes = bytes.subspan(static_cast<size_t>(written));
    }
    return true;
}

bool WriteContents(int descriptor, const MapFile& file) {
    std::vector<char> piece(pieceSize);
    for (uint64_t offset = 0; offset < file.size; offset += piece.size()) {
        piece.resize(std::min<uint64_t>(pieceSize, file.size - offset));
        ReadMapFile(file, offset, piece);
        if (!WriteWhole(descriptor, piece)) return false;
    }
    return fdatasync(descriptor) == 0;
}

void MakeFile(const std::filesystem::path& folder, const MapFile& file) {
    const std::filesystem::path target = folder / file.name;
    // No map has such a name, so it is never served.
    const std::filesystem::path unfinished = folder / ("." + file.name + ".unfinished");
    const Descriptor opened(
        open(unfinished.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (opened.Get() < 0) Fail(unfinished, "made", errno);
    if (WriteContents(opened.Get(), file) && rename(unfinished.c_str(), target.c_str()) == 0) return;
    const int error = errno;
    unlink(unfinished.c_str());
    Fail(target, "made", error);
}

}  // namespace

void MakeMapFiles(const std::filesystem::path& folder, std::span<const MapFile> files) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) Fail(folder, "made", error.value());
    const Descriptor lock(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (lock.Get() < 0) Fail(folder, "opened", errno);
    if (flock(lock.Get(), LOCK_EX) != 0) Fail(folder, "locked", errno);
    for (const MapFile& file : files) {
        struct stat there {};
        if (lstat((folder / file.name).c_str(), &there) != 0) MakeFile(folder, file);
    }
}

std::unique_ptr<MapReader> MapReader::Open(const std::filesystem::path& folder, const std::string& name) {
    // Without O_NONBLOCK a pipe of that name would hold the caller up.
    Descriptor opened(open((folder / name).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (opened.Get() < 0) {
        for (const int absent : {ENOENT, ENOTDIR, ELOOP, ENAMETOOLONG, ENXIO}) {
            if (errno == absent) return nullptr;
        }
        throw std::system_error(errno, std::generic_category(), "the map '" + name + "' cannot be opened");
    }
    struct stat status {};
    if (fstat(opened.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
    return std::unique_ptr<MapReader>(new MapReader(opened.Release(), static_cast<uint64_t>(status.st_size)));
}

MapReader::~MapReader() {
    close(descriptor);
}

size_t MapReader::Read(uint64_t offset, std::span<char> bytes) const {
    const ssize_t count = pread(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    return count > 0 ? static_cast<size_t>(count) : 0;
}
