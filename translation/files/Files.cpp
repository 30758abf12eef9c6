#include "files/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "files/OpenedFile.h"

namespace {

// Enough for tens of thousands of texts, so that a hostile file takes neither long nor much memory.
constexpr size_t mostBytes = size_t{4} << 20;

[[noreturn]] void Fail(const std::string& path, const char* what) {
    const std::string cause = errno == 0 ? "" : std::string(": ") + std::strerror(errno);
    throw UsageError("'" + path + "' cannot be " + what + cause);
}

void WriteAll(int file, std::string_view bytes, const std::string& path) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) Fail(path, "written");
        bytes.remove_prefix(static_cast<size_t>(count));
    }
}

/* A file beside the one that it is to become. It goes away unless it becomes that. */
class NewFile {
public:
    explicit NewFile(std::filesystem::path finalPath)
        : target(std::move(finalPath)),
          path(target.parent_path() / ".translation.XXXXXX"),
          file(mkostemp(path.data(), O_CLOEXEC)) {
        if (file < 0) Fail(target, "written");
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (file >= 0) close(file);
        if (!isDone) unlink(path.c_str());
    }

    void Write(std::string_view bytes) {
        WriteAll(file, bytes, target);
        if (fchmod(file, Mode()) != 0) Fail(target, "written");
        if (close(std::exchange(file, -1)) != 0) Fail(target, "written");
        if (rename(path.c_str(), target.c_str()) != 0) Fail(target, "written");
        isDone = true;
    }

private:
    /* That of the file that stands there, else what a new file gets. */
    [[nodiscard]] mode_t Mode() const {
        struct stat state = {};
        if (stat(target.c_str(), &state) == 0) return state.st_mode & 07777;
        const mode_t mask = umask(0);
        umask(mask);
        return 0666 & ~mask;
    }

    std::filesystem::path target;
    std::string path; /* in the same folder, with a name that is not longer than others may be */
    int file;
    bool isDone = false;
};

/* What a link names is written, not the link. */
std::filesystem::path WithoutLinks(const std::string& path) {
    constexpr int most = 40;
    std::error_code none;
    std::filesystem::path target = path;
    for (int count = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(target, none)); ++count) {
        if (count == most) {
            errno = ELOOP;
            Fail(path, "written");
        }
        target = target.parent_path() / std::filesystem::read_symlink(target, none);
    }
    return target;
}

/* Replacing a file asks only for its folder; who has protected the file has meant it. */
void RequireWritable(const std::string& path) {
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT) Fail(path, "written");
}

/* Devices and pipes cannot be replaced, only written to. */
void WriteInPlace(const std::string& path, std::string_view bytes) {
    const OpenedFile file(fopen(path.c_str(), "wb"));
    if (file == nullptr) Fail(path, "written");
    if (fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() || fflush(file.get()) != 0)
        Fail(path, "written");
}

}  // namespace

std::string ReadFile(const std::string& path) {
    errno = 0;
    const OpenedFile file(fopen(path.c_str(), "rb"));
    if (file == nullptr) Fail(path, "read");
    std::string bytes;
    std::array<char, 65536> buffer = {};
    for (size_t count = 0; (count = fread(buffer.data(), 1, buffer.size(), file.get())) > 0;) {
        bytes.append(buffer.data(), count);
        if (bytes.size() > mostBytes) throw UsageError("'" + path + "' is larger than 4 MB");
    }
    if (ferror(file.get()) != 0) Fail(path, "read");
    return bytes;
}

void WriteFile(const std::string& path, std::string_view bytes) {
    errno = 0;
    if (path == "-") {
        WriteAll(STDOUT_FILENO, bytes, "standard output");
        return;
    }
    std::error_code none;
    const std::filesystem::file_status status = std::filesystem::status(path, none);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        WriteInPlace(path, bytes);
        return;
    }
    const std::filesystem::path target = WithoutLinks(path);
    RequireWritable(target);
    NewFile(target).Write(bytes);
}
