/* The stub platform's system: a computer without a Connection Manager, a registry and special folders. */
#include "Platform.h"

#include "transport/NetworkConnection.h"

// Defined here, the library's other process-wide objects, and with them its windows and dialogs, are not
// linked.
HANDLE managedConnection = nullptr;

namespace {

DWORD lastError = 0;

}  // namespace

DWORD WINAPI GetLastError() {
    return lastError;
}

void WINAPI SetLastError(DWORD error) {
    lastError = error;
}

HCURSOR WINAPI LoadCursorW(HINSTANCE /*module*/, LPCWSTR /*name*/) {
    return nullptr;
}

HCURSOR WINAPI SetCursor(HCURSOR /*cursor*/) {
    return nullptr;
}

HRESULT WINAPI ConnMgrMapURL(LPCWSTR /*url*/, GUID* /*network*/, DWORD* /*index*/) {
    return E_FAIL;
}

HRESULT WINAPI ConnMgrEstablishConnectionSync(CONNMGR_CONNECTIONINFO* /*info*/, HANDLE* /*connection*/,
                                              DWORD /*timeout*/, DWORD* /*status*/) {
    return E_FAIL;
}

HRESULT WINAPI ConnMgrReleaseConnection(HANDLE /*connection*/, LONG /*cache*/) {
    return E_FAIL;
}

DWORD WINAPI GetFileAttributesW(LPCWSTR /*path*/) {
    return INVALID_FILE_ATTRIBUTES;
}

BOOL WINAPI CreateDirectoryW(LPCWSTR /*path*/, LPSECURITY_ATTRIBUTES /*attributes*/) {
    return FALSE;
}

BOOL WINAPI SHGetSpecialFolderPathW(HWND /*owner*/, LPWSTR /*path*/, int /*folder*/, BOOL /*create*/) {
    return FALSE;
}

DWORD WINAPI GetModuleFileNameW(HMODULE /*module*/, LPWSTR /*path*/, DWORD /*size*/) {
    return 0;
}

LONG WINAPI RegOpenKeyExW(HKEY /*key*/, LPCWSTR /*path*/, DWORD /*options*/, REGSAM /*access*/,
                          PHKEY /*opened*/) {
    return ERROR_FILE_NOT_FOUND;
}

LONG WINAPI RegQueryValueExW(HKEY /*key*/, LPCWSTR /*name*/, LPDWORD /*reserved*/, LPDWORD /*type*/,
                             LPBYTE /*data*/, LPDWORD /*size*/) {
    return ERROR_FILE_NOT_FOUND;
}

LONG WINAPI RegCloseKey(HKEY /*key*/) {
    return ERROR_SUCCESS;
}
