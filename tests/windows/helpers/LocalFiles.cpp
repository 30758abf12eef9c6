#include "helpers/LocalFiles.h"

#include "Platform.h"

#include <stdexcept>

#include "base/OwnedFile.h"

std::string ContentOf(const std::wstring& path) {
    const FileHandle file(_wfopen(path.c_str(), L"rb"));
    if (!file) return "no file";
    std::string bytes;
    char buffer[65536];
    for (size_t some; (some = fread(buffer, 1, sizeof buffer, file.Get())) > 0;)
        bytes.append(buffer, some);
    return bytes;
}

void PutFile(const std::wstring& path, std::string_view bytes) {
    FILE* const file = _wfopen(path.c_str(), L"wb");
    const bool written = file && fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (!file || fclose(file) != 0 || !written)
        throw std::runtime_error("a file of the test cannot be written");
}

uint64_t SizeOfFile(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
    return uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
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
