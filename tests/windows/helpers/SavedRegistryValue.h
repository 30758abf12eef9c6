/* A registry value that a test changes for a while. */
#pragma once

#include "Platform.h"

#include <optional>
#include <string>

/* While one lives, the value holds `text`; afterwards it is what it was, or is gone if it was not there. A
 * key that has to be made for it stays, empty. */
class SavedRegistryValue {
public:
    /* Throws std::runtime_error when the value cannot be written. */
    SavedRegistryValue(HKEY root, const std::wstring& path, std::wstring valueName, const std::wstring& text);
    ~SavedRegistryValue();
    SavedRegistryValue(const SavedRegistryValue&) = delete;
    SavedRegistryValue& operator=(const SavedRegistryValue&) = delete;

private:
    HKEY key = nullptr;
    std::wstring name;
    DWORD formerType = REG_NONE;
    std::optional<std::string> former;
};
