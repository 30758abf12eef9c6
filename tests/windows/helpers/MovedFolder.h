/* A folder of the user's that a test puts elsewhere for a while. */
#pragma once

#include "helpers/SavedRegistryValue.h"

/* While one lives, the user's folder of that name, "AppData" or "Personal", is the one at `path`. */
class MovedFolder {
public:
    /* Throws std::runtime_error when the user's settings cannot be written. */
    MovedFolder(const std::wstring& name, const std::wstring& path)
        : setting(HKEY_CURRENT_USER,
                  L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders", name, path) {
    }

private:
    SavedRegistryValue setting;
};
