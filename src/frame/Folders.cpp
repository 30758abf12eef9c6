#include "frame/Folders.h"

#include "frame/Paths.h"

bool CreateFolderPath(const WideString& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (path.size() < 2) return true;
    CreateFolderPath(GetFolderPart(path));
    return CreateDirectoryW(path.c_str(), nullptr) != FALSE;
}

WideString GetSpecialFolderPath(int csidl, WideStringView subfolder) {
    WCHAR buffer[MAX_PATH]{};
    if (!SHGetSpecialFolderPath(nullptr, buffer, csidl, TRUE)) return {};
    WideString path = buffer;
    if (subfolder.empty()) return path;
    path.append(TEXT("\\")).append(subfolder);
    CreateFolderPath(path);
    return path;
}
