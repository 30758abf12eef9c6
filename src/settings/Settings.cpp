#include "settings/Settings.h"

#include <algorithm>

#include "base/Owned.h"

namespace {

struct RegistryKeyKind {
    using Handle = HKEY;
    static constexpr Handle none = nullptr;
    static void Close(Handle key) noexcept { RegCloseKey(key); }
};
using RegistryKey = Owned<RegistryKeyKind>;

/* Reads a value of at most `size` bytes into `buffer`; `size` becomes the number of bytes read. */
bool QueryValue(HKEY root, const WCHAR* path, const WCHAR* name, DWORD type, BYTE* buffer, DWORD& size) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    const RegistryKey key(opened);
    return RegQueryValueExW(key.Get(), name, nullptr, &type, buffer, &size) == ERROR_SUCCESS;
}

}  // namespace

uint32_t ReadRegistryDword(HKEY root, const WCHAR* key, const WCHAR* name, uint32_t defaultValue) {
    BYTE bytes[4]{};
    DWORD size = sizeof bytes;
    if (!QueryValue(root, key, name, REG_DWORD, bytes, size)) return defaultValue;
    return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
}

WideString ReadRegistryString(HKEY root, const WCHAR* key, const WCHAR* name,
                              const WideString& defaultValue) {
    WCHAR text[261]{};
    DWORD size = sizeof text;
    if (!QueryValue(root, key, name, REG_SZ, reinterpret_cast<BYTE*>(text), size)) return defaultValue;
    const WideStringView stored(text, size / sizeof(WCHAR));
    const size_t length = std::min(stored.find(WCHAR{0}), stored.size());
    if (length == std::size(text)) return defaultValue;
    return WideString(stored.substr(0, length));
}

WideString ReadSettingString(const WCHAR* /*section*/, const WCHAR* name, const WideString& defaultValue) {
    return ReadRegistryString(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), name, defaultValue);
}
