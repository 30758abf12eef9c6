/* The machine under a test is Windows itself. */
#include "support/DeviceTest.h"

#include <cstdlib>
#include <vector>

namespace {

struct WrittenValue {
    HKEY root;
    WideString key;
    WideString name;
};

struct MadeKey {
    HKEY root;
    WideString path;
};

WideString folder;
std::vector<WrittenValue> writtenValues;
std::vector<MadeKey> madeKeys;

/* What a test cannot do without; its failure would make every expectation meaningless. */
void Require(bool done, const char* what) {
    if (done) return;
    std::fprintf(stderr, "%s failed: Windows error %lu\n", what, GetLastError());
    std::abort();
}

void RemoveFolder(const WideString& path) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((path + L"\\*").c_str(), &entry);
    Require(search != INVALID_HANDLE_VALUE, "FindFirstFile");
    do {
        const WideString name = entry.cFileName;
        if (name == L"." || name == L"..") continue;
        const WideString whole = path + L"\\" + name;
        SetFileAttributesW(whole.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            RemoveFolder(whole);
        } else {
            // A file that the library has left open cannot be deleted.
            EXPECT_TRUE(DeleteFileW(whole.c_str())) << "left open: " << testing::PrintToString(name);
        }
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    EXPECT_TRUE(RemoveDirectoryW(path.c_str()));
}

WideString NewFolder() {
    WCHAR temporary[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, temporary);
    Require(length > 0 && length <= MAX_PATH, "GetTempPath");
    WideString path = WideString(temporary) + L"orvande-" + std::to_wstring(GetCurrentProcessId());
    // What a process of the same number left behind is not part of the test.
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) RemoveFolder(path);
    Require(CreateDirectoryW(path.c_str(), nullptr), "CreateDirectory");
    return path;
}

/* Opens a key for writing; those on its path that are not there are made, and remembered. */
HKEY KeyFor(HKEY root, const WideString& path) {
    HKEY key = nullptr;
    for (size_t end = 0; end != WideString::npos;) {
        end = path.find(L'\\', end == 0 ? 0 : end + 1);
        const WideString part = path.substr(0, end);
        DWORD disposition = 0;
        if (key) RegCloseKey(key);
        Require(RegCreateKeyExW(root, part.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition) ==
                    ERROR_SUCCESS,
                "RegCreateKeyEx");
        if (disposition == REG_CREATED_NEW_KEY) madeKeys.push_back({root, part});
    }
    return key;
}

void RestoreRegistry() {
    for (const WrittenValue& value : writtenValues) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(value.root, value.key.c_str(), 0, KEY_WRITE, &key) != ERROR_SUCCESS) continue;
        RegDeleteValueW(key, value.name.c_str());
        RegCloseKey(key);
    }
    writtenValues.clear();
    for (; !madeKeys.empty(); madeKeys.pop_back()) {
        RegDeleteKeyW(madeKeys.back().root, madeKeys.back().path.c_str());
    }
}

FILE* Open(const WideString& path, const WCHAR* mode) {
    return _wfopen(path.c_str(), mode);
}

}  // namespace

void DeviceTest::SetUp() {
    folder = NewFolder();
}

void DeviceTest::TearDown() {
    RestoreRegistry();
    RemoveFolder(folder);
}

WideString DeviceTest::PathOf(WideStringView name) {
    return folder + L"\\" + WideString(name);
}

void DeviceTest::PutFile(const WideString& path, std::string_view bytes) {
    FILE* const file = Open(path, L"wb");
    Require(file != nullptr, "Opening a file for writing");
    Require(fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "Writing a file");
    Require(fclose(file) == 0, "Closing a file");
}

std::optional<std::string> DeviceTest::TakeFile(const WideString& path) {
    FILE* const file = Open(path, L"rb");
    if (file == nullptr) return std::nullopt;
    std::string bytes;
    char buffer[4096];
    for (size_t some; (some = fread(buffer, 1, sizeof buffer, file)) > 0;)
        bytes.append(buffer, some);
    const bool whole = ferror(file) == 0;
    fclose(file);
    return whole ? std::optional(bytes) : std::nullopt;
}

void DeviceTest::MakeFolder(const WideString& path) {
    Require(CreateDirectoryW(path.c_str(), nullptr), "CreateDirectory");
}

void DeviceTest::SetRegistryValue(HKEY root, const WCHAR* key, const WCHAR* name, DWORD type,
                                  std::string_view bytes) {
    const HKEY opened = KeyFor(root, key);
    const auto* const data = reinterpret_cast<const BYTE*>(bytes.data());
    const LSTATUS result = RegSetValueExW(opened, name, 0, type, data, static_cast<DWORD>(bytes.size()));
    RegCloseKey(opened);
    Require(result == ERROR_SUCCESS, "RegSetValueEx");
    writtenValues.push_back({root, key, name});
}

std::string DeviceTest::BytesOf(WideStringView text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)};
}
