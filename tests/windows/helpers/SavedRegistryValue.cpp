#include "helpers/SavedRegistryValue.h"

#include <stdexcept>
#include <utility>

SavedRegistryValue::SavedRegistryValue(HKEY root, const std::wstring& path, std::wstring valueName,
                                       const std::wstring& text)
    : name(std::move(valueName)) {
    if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key, nullptr) !=
        ERROR_SUCCESS) {
        throw std::runtime_error("a registry key cannot be opened");
    }
    DWORD size = 0;
    if (RegQueryValueExW(key, name.c_str(), nullptr, &formerType, nullptr, &size) == ERROR_SUCCESS) {
        former.emplace(size, '\0');
        RegQueryValueExW(key, name.c_str(), nullptr, &formerType, reinterpret_cast<BYTE*>(former->data()),
                         &size);
    }
    if (RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR))) != ERROR_SUCCESS) {
        RegCloseKey(key);
        throw std::runtime_error("a registry value cannot be written");
    }
}

SavedRegistryValue::~SavedRegistryValue() {
    if (former) {
        RegSetValueExW(key, name.c_str(), 0, formerType, reinterpret_cast<const BYTE*>(former->data()),
                       static_cast<DWORD>(former->size()));
    } else {
        RegDeleteValueW(key, name.c_str());
    }
    RegCloseKey(key);
}
