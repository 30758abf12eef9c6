#include "LocalFile.h"

#include <windows.h>

#include "FailureText.h"

namespace {

/* A file that is closed at the end of this object's life. */
class FileHandle {
public:
    FileHandle(const std::wstring& path, DWORD access, DWORD creation)
        : handle(CreateFileW(path.c_str(), access, 0, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr)),
          error(handle == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS) {}
    ~FileHandle() {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    [[nodiscard]] HANDLE Get() const { return handle; }
    /* Why it was not opened; ERROR_SUCCESS when it was. */
    [[nodiscard]] DWORD Error() const { return error; }

private:
    HANDLE handle;
    DWORD error;
};

/* A sentence for an error; empty for ERROR_SUCCESS. */
std::wstring Problem(const std::wstring& path, DWORD error) {
    return error == ERROR_SUCCESS ? L"" : FailureSentence(path + L" cannot be written", error);
}

std::wstring WhyNotOverwritten(const std::wstring& path, DWORD attributes) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return path + L" is a folder.";
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return path + L" is read-only.";
    return Problem(path, FileHandle(path, GENERIC_WRITE, OPEN_EXISTING).Error());
}

}  // namespace

bool IsThere(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring WhyNotReplaceable(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? L"" : WhyNotOverwritten(path, attributes);
}

std::wstring WhyNotWritable(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) return WhyNotOverwritten(path, attributes);
    const DWORD error = FileHandle(path, GENERIC_WRITE, CREATE_ALWAYS).Error();
    if (error == ERROR_SUCCESS) DeleteFileW(path.c_str());
    return Problem(path, error);
}

std::wstring SaveFile(const std::wstring& path, std::span<const uint8_t> bytes) {
    DWORD error = ERROR_SUCCESS;
    {
        const FileHandle file(path, GENERIC_WRITE, CREATE_ALWAYS);
        if (file.Error() != ERROR_SUCCESS) return Problem(path, file.Error());
        const auto size = static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!WriteFile(file.Get(), bytes.data(), size, &written, nullptr)) {
            error = GetLastError();
        } else if (written < size) {
            error = ERROR_DISK_FULL;
        }
    }
    if (error != ERROR_SUCCESS) DeleteFileW(path.c_str());
    return Problem(path, error);
}
