#include "helpers/ProgramFolder.h"

#include <stdexcept>

#include "Platform.h"

std::wstring ProgramFolder() {
    WCHAR path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    if (length == 0 || length == MAX_PATH)
        throw std::runtime_error("the program's folder has too long a path");
    const std::wstring whole(path, length);
    return whole.substr(0, whole.find_last_of(L'\\'));
}
