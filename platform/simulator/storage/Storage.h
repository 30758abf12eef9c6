/* The device's files: a folder of this computer in which a device path finds its place. */
#pragma once

#include "Platform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

class Storage {
public:
    static Storage& Current();

    /* The folders of a new device. */
    static constexpr std::u16string_view newFolders[] = {
        u"\\Temp",         u"\\Storage",          u"\\Windows",
        u"\\My Documents", u"\\Application Data", u"\\Program Files\\App",
    };

    /* Empties the device but for those folders, as far as they are there. */
    void BeginTest();

    /* Empties it as well. Until the next BeginTest there are no files. */
    void EndTest();

    /* The place of a device path, existing names found whatever their case. Nothing: no path of this device
     * (outside of a test, 260 units or more, a unit that names cannot hold); `error` says why. */
    std::optional<std::string> Place(std::u16string_view path, DWORD& error) const;

    /* The error of a place that does not exist: whether it is the file or its folder that is missing. */
    static DWORD MissingError(const std::string& place);

    static bool IsFolder(const std::string& place);
    static bool IsThere(const std::string& place);
    static bool IsReadOnly(const std::string& place);

    /* What the file at a place holds; nothing when it cannot be read. */
    static std::optional<std::string> ReadPlace(const std::string& place);

    /* Takes `bytes` off the free storage; how many of them there was room for. */
    size_t Claim(size_t bytes);

    void SetFree(std::optional<uint64_t> bytes) { free_ = bytes; }

private:
    void Empty();
    // One folder for the whole process: making and removing the folders for every test takes longer than most
    // tests do.
    std::string root_;
    bool isInTest_ = false;
    std::optional<uint64_t> free_;
};

/* The special folders as they are on a new device. */
void ResetSpecialFolders();

/* Reports files that were opened since the test began and are still open, and closes them. */
void ReportOpenFiles();

/* Files that are open count as opened before the test. */
void AcceptOpenFiles();

}  // namespace simulator
