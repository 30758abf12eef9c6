#include "helpers/WebProxy.h"

#include <stdexcept>
#include <string>

namespace {

constexpr WCHAR settings[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
constexpr WCHAR enabledName[] = L"ProxyEnable";
constexpr WCHAR serverName[] = L"ProxyServer";

}  // namespace

WebProxy::WebProxy(uint16_t port) {
    if (RegCreateKeyExW(HKEY_CURRENT_USER, settings, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) !=
        ERROR_SUCCESS) {
        throw std::runtime_error("the user's internet settings cannot be opened");
    }
    const DWORD enabled = 1;
    const std::wstring server = L"127.0.0.1:" + std::to_wstring(port);
    RegSetValueExW(key, enabledName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&enabled), sizeof enabled);
    RegSetValueExW(key, serverName, 0, REG_SZ, reinterpret_cast<const BYTE*>(server.c_str()),
                   static_cast<DWORD>((server.size() + 1) * sizeof(WCHAR)));
}

WebProxy::~WebProxy() {
    RegDeleteValueW(key, serverName);
    RegDeleteValueW(key, enabledName);
    RegCloseKey(key);
}
