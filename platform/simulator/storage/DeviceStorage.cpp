#include "storage/DeviceStorage.h"

#include <filesystem>
#include <fstream>

#include "machine/Text.h"
#include "machine/Violations.h"
#include "storage/Registry.h"
#include "storage/Storage.h"

namespace fs = std::filesystem;

using simulator::Storage;

void DeviceStorage::BeginTest() {
    simulator::ResetRegistry();
    simulator::ResetSpecialFolders();
    simulator::AcceptOpenFiles();
    Storage::Current().BeginTest();
    for (const auto name : Storage::newFolders)
        MakeFolder(name);
}

void DeviceStorage::EndTest() {
    simulator::ReportOpenFiles();
    simulator::ResetRegistry();
    simulator::ResetSpecialFolders();
    Storage::Current().EndTest();
}

// NOLINTNEXTLINE(readability-make-member-function-const): changes the device
void DeviceStorage::PutFile(std::u16string_view path, std::string_view bytes) {
    const fs::path place = HostPath(path);
    std::error_code ignored;
    fs::create_directories(place.parent_path(), ignored);
    std::ofstream file(place, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) simulator::Violate("PutFile cannot write " + simulator::Quoted(path));
}

// NOLINTNEXTLINE(readability-make-member-function-const): changes the device
void DeviceStorage::MakeFolder(std::u16string_view path) {
    const std::string place = HostPath(path);
    std::error_code ignored;
    fs::create_directories(place, ignored);
    if (!Storage::IsFolder(place)) simulator::Violate("MakeFolder cannot make " + simulator::Quoted(path));
}

std::optional<std::string> DeviceStorage::TakeFile(std::u16string_view path) const {
    const std::string place = HostPath(path);
    if (!Storage::IsThere(place) || Storage::IsFolder(place)) return std::nullopt;
    return Storage::ReadPlace(place);
}

bool DeviceStorage::Exists(std::u16string_view path) const {
    return Storage::IsThere(HostPath(path));
}

std::string DeviceStorage::HostPath(std::u16string_view path) const {
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(path, error);
    if (place) return *place;
    simulator::Violate("no path of this device: " + simulator::Quoted(path));
    // Where nothing can be made, not even by root.
    return "/dev/null/nowhere";
}

// NOLINTNEXTLINE(readability-make-member-function-const): changes the device
void DeviceStorage::SetReadOnly(std::u16string_view path, bool isReadOnly) {
    std::error_code error;
    fs::permissions(HostPath(path), fs::perms::owner_write,
                    isReadOnly ? fs::perm_options::remove : fs::perm_options::add, error);
    if (error) simulator::Violate("SetReadOnly cannot change " + simulator::Quoted(path));
}

void DeviceStorage::SetFreeStorage(std::optional<uint64_t> bytes) {
    Storage::Current().SetFree(bytes);
}
