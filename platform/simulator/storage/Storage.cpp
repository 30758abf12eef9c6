#include "storage/Storage.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <vector>

#include "machine/Text.h"
#include "machine/Violations.h"

namespace fs = std::filesystem;

namespace simulator {

namespace {

bool IsSeparator(char16_t unit) {
    return unit == u'\\' || unit == u'/';
}

bool IsForbidden(char16_t unit) {
    return unit < 0x20 || std::u16string_view(u"<>:\"|?*").find(unit) != std::u16string_view::npos;
}

/* The names of a path from the root on. */
std::vector<std::u16string_view> NamesIn(std::u16string_view path) {
    std::vector<std::u16string_view> names;
    while (!path.empty()) {
        const auto end =
            static_cast<size_t>(std::find_if(path.begin(), path.end(), IsSeparator) - path.begin());
        const std::u16string_view name = path.substr(0, end);
        path.remove_prefix(std::min(path.size(), end + 1));
        if (name == u"..") {
            if (!names.empty()) names.pop_back();
        } else if (!name.empty() && name != u".") {
            names.push_back(name);
        }
    }
    return names;
}

std::string Joined(const std::vector<std::u16string_view>& names) {
    std::string place;
    for (const std::u16string_view name : names)
        place += '/' + ToUtf8(name);
    return place;
}

/* The entry of `folder` with that name, in the case in which it exists. */
fs::path Entry(const fs::path& folder, std::u16string_view name) {
    fs::path exact = folder / ToUtf8(name);
    std::error_code ignored;
    if (fs::exists(exact, ignored)) return exact;
    const std::u16string folded = Folded(name);
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        if (Folded(FromUtf8(entry.path().filename().native())) == folded) return entry.path();
    }
    return exact;
}

/* Whether the folder is one of those of a new machine, or above one. */
bool IsNewFolder(const fs::path& folder, const std::string& root) {
    return std::any_of(std::begin(Storage::newFolders), std::end(Storage::newFolders),
                       [&](std::u16string_view name) {
                           std::string path = root + ToUtf8(name) + '/';
                           std::replace(path.begin(), path.end(), '\\', '/');
                           return path.starts_with(folder.native() + '/');
                       });
}

/* A folder that is removed when the process ends; empty when it cannot be made. */
std::string MakeRoot() {
    static auto& root = *new std::string((fs::temp_directory_path() / "orvande-device-XXXXXX").native());
    if (mkdtemp(root.data()) == nullptr) {
        Violate("the device's folder cannot be made: " + root);
        return {};
    }
    std::atexit([] {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    });
    return root;
}

}  // namespace

Storage& Storage::Current() {
    static Storage& storage = *new Storage;
    return storage;
}

void Storage::BeginTest() {
    if (root_.empty()) root_ = MakeRoot();
    Empty();
    isInTest_ = !root_.empty();
    free_.reset();
}

void Storage::EndTest() {
    Empty();
    isInTest_ = false;
}

void Storage::Empty() {
    if (root_.empty()) return;
    std::error_code ignored;
    std::vector<fs::path> leftovers;
    for (auto entry = fs::recursive_directory_iterator(root_, ignored); entry != fs::end(entry);
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && IsNewFolder(entry->path(), root_)) continue;
        leftovers.push_back(entry->path());
        entry.disable_recursion_pending();
    }
    for (const fs::path& leftover : leftovers)
        fs::remove_all(leftover, ignored);
}

std::optional<std::string> Storage::Place(std::u16string_view path, DWORD& error) const {
    error = path.size() >= MAX_PATH ? ERROR_FILENAME_EXCED_RANGE : ERROR_PATH_NOT_FOUND;
    if (!isInTest_ || path.empty() || path.size() >= MAX_PATH) return std::nullopt;
    error = ERROR_INVALID_NAME;
    if (std::any_of(path.begin(), path.end(), IsForbidden)) return std::nullopt;
    error = ERROR_SUCCESS;
    const std::vector<std::u16string_view> names = NamesIn(path);
    // Mostly all of them are there as they are written, and none has to be looked for.
    if (std::string exact = root_ + Joined(names); IsThere(exact)) return exact;
    fs::path place = root_;
    for (const std::u16string_view name : names)
        place = Entry(place, name);
    return place.native();
}

DWORD Storage::MissingError(const std::string& place) {
    return IsFolder(fs::path(place).parent_path().native()) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

bool Storage::IsFolder(const std::string& place) {
    std::error_code ignored;
    return fs::is_directory(place, ignored);
}

bool Storage::IsThere(const std::string& place) {
    std::error_code ignored;
    return fs::exists(place, ignored);
}

bool Storage::IsReadOnly(const std::string& place) {
    // The mode itself: whether this process could write all the same does not matter to the device.
    std::error_code ignored;
    return (fs::status(place, ignored).permissions() & fs::perms::owner_write) == fs::perms::none;
}

std::optional<std::string> Storage::ReadPlace(const std::string& place) {
    const int descriptor = open(place.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;
    std::string bytes;
    char block[4096];
    ssize_t count = 0;
    while ((count = read(descriptor, block, sizeof block)) > 0)
        bytes.append(block, static_cast<size_t>(count));
    close(descriptor);
    return count == 0 ? std::optional(std::move(bytes)) : std::nullopt;
}

size_t Storage::Claim(size_t bytes) {
    if (!free_) return bytes;
    const auto claimed = static_cast<size_t>(std::min<uint64_t>(bytes, *free_));
    *free_ -= claimed;
    return claimed;
}

}  // namespace simulator
