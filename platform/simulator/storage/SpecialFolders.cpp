/* The shell's special folders. */
#include "Platform.h"

#include <cstring>
#include <filesystem>
#include <map>

#include "machine/Call.h"
#include "machine/Text.h"
#include "storage/DeviceStorage.h"
#include "storage/Storage.h"

namespace {

using simulator::Call;
using simulator::Storage;

std::map<int, std::u16string>& SpecialFolders() {
    static auto& folders = *new std::map<int, std::u16string>;
    return folders;
}

/* Whether the folder is there, or was made. */
bool HasFolder(const std::u16string& path, bool create) {
    DWORD error = ERROR_SUCCESS;
    const auto place = Storage::Current().Place(path, error);
    if (!place) return false;
    std::error_code ignored;
    if (create) std::filesystem::create_directories(*place, ignored);
    return Storage::IsFolder(*place);
}

}  // namespace

BOOL WINAPI SHGetSpecialFolderPathW(HWND owner, LPWSTR path, int csidl, BOOL create) {
    Call call("SHGetSpecialFolderPathW");
    call.Arguments(
        {simulator::PointerText(owner), std::to_string(csidl), create != FALSE ? "TRUE" : "FALSE"});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (path == nullptr) return call.False(ERROR_INVALID_PARAMETER);
    const auto found = SpecialFolders().find(csidl);
    if (found == SpecialFolders().end()) return call.False(ERROR_INVALID_PARAMETER);
    const std::u16string& folder = found->second;
    if (!HasFolder(folder, create != FALSE)) return call.False(ERROR_PATH_NOT_FOUND);
    std::memcpy(path, folder.c_str(), (folder.size() + 1) * sizeof(WCHAR));
    return call.True(simulator::Quoted(folder));
}

void simulator::ResetSpecialFolders() {
    SpecialFolders() = {{CSIDL_PERSONAL, u"\\My Documents"}, {CSIDL_APPDATA, u"\\Application Data"}};
}

void DeviceStorage::SetSpecialFolder(int csidl, std::optional<std::u16string> path) {
    if (path) {
        SpecialFolders()[csidl] = *std::move(path);
    } else {
        SpecialFolders().erase(csidl);
    }
}
