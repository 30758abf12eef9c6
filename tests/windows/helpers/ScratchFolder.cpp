#include "helpers/ScratchFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    static int count = 0;
    const std::wstring name =
        L"orvande-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    path = (fs::temp_directory_path() / name).wstring();
    // What a process of the same number left behind is not part of the test.
    fs::remove_all(path);
    fs::create_directory(path);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::vector<std::wstring> ScratchFolder::Names() const {
    std::vector<std::wstring> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(path))
        names.push_back(entry.path().filename().wstring());
    std::sort(names.begin(), names.end());
    return names;
}

std::string ContentOf(const std::wstring& path) {
    std::ifstream file(fs::path(path), std::ios::binary);
    if (!file) return "no file";
    return {std::istreambuf_iterator<char>(file), {}};
}

void PutFile(const std::wstring& path, std::string_view bytes) {
    std::ofstream file(fs::path(path), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("a file of the test cannot be written");
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void WaitForFile(const std::wstring& path) {
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\'));
    const HANDLE change = FindFirstChangeNotificationW(folder.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME);
    if (change == INVALID_HANDLE_VALUE) throw std::runtime_error("the folder cannot be watched");
    bool changes = true;
    while (changes && !Exists(path)) {
        changes = WaitForSingleObject(change, 30000) == WAIT_OBJECT_0;
        FindNextChangeNotification(change);
    }
    FindCloseChangeNotification(change);
    if (!changes) throw std::runtime_error("the file has not come");
}
