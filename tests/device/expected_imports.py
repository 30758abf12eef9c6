"""What each of the files takes from the device's libraries. A new name here is a decision: whether every
device has the function (platform/device/exports), and whether the library ought to use it. None of them makes
a thread or writes the registry."""

NETWORK = {
    "CELLCORE.dll": {"ConnMgrEstablishConnectionSync", "ConnMgrMapURL", "ConnMgrReleaseConnection"},
    "WININET.dll": {"HttpOpenRequestW", "HttpQueryInfoW", "HttpSendRequestW", "InternetCloseHandle",
                    "InternetConnectW", "InternetOpenW", "InternetReadFile"},
}

# What the compiler's runtime needs, and every program does.
RUNTIME = {"TerminateProcess", "free", "malloc", "memcpy", "memmove", "memset", "strcmp", "wcslen"}

LIBRARY = {
    "COREDLL.dll": RUNTIME | {
        "CloseHandle", "CreateFileW", "DeleteFileW", "GetFileAttributesW", "GetLastError",
        "GetModuleFileNameW", "LoadCursorW", "MessageBoxW", "MoveFileW", "RegCloseKey", "RegOpenKeyExW",
        "RegQueryValueExW", "SHGetSpecialFolderPath", "SetCursor", "SetLastError", "WriteFile", "_vsnwprintf",
        "_wfopen", "fclose", "fread", "fseek", "fwrite", "memcmp", "swscanf"},
    **NETWORK,
    "aygshell.dll": {"#9"},
}

MAPSHOP = {
    "COREDLL.dll": RUNTIME | {
        "CloseHandle", "CreateFileW", "DeleteFileW", "FlushFileBuffers", "FreeLibrary", "GetFileAttributesW",
        "GetLastError", "GetModuleFileNameW", "GetProcAddressA", "GetTickCount", "LoadLibraryW", "MoveFileW",
        "ReadFile", "SetFilePointer", "SetLastError", "WideCharToMultiByte", "WriteFile", "_getstdfilex",
        "fputs", "memcmp", "puts", "strlen", "wcstod"},
}

# The dialogs, the settings and the exchange with the service.
ACCOUNT = {
    "COREDLL.dll": RUNTIME | {
        "CallWindowProcW", "CreateDirectoryW", "DefWindowProcW", "DestroyWindow", "DialogBoxIndirectParamW",
        "EndDialog", "FindResourceW", "GetDlgItem", "GetDlgItemTextW", "GetFileAttributesW", "GetLastError",
        "GetMenuItemInfoW", "GetModuleFileNameW", "GetModuleHandleW", "GetSubMenu", "GetWindow",
        "GetWindowLongW", "GetWindowTextW", "IsWindow", "IsWindowEnabled", "LoadCursorW", "LoadLibraryW",
        "LoadResource", "MessageBoxW", "RegCloseKey", "RegOpenKeyExW", "RegQueryValueExW",
        "SHGetSpecialFolderPath", "SendDlgItemMessageW", "SendMessageW", "SetCursor", "SetFocus",
        "SetLastError", "SetMenuItemInfoW", "SetWindowLongW", "SetWindowTextW", "ShellExecuteEx",
        "_vsnwprintf", "_wfopen", "fclose", "feof", "ferror", "fflush", "fread", "fseek", "fwrite", "memcmp"},
    **NETWORK,
    "aygshell.dll": {"#9", "#34", "#56", "#97"},
}

# What a program adds that signs its user in: it waits for others, and prints.
SIGNIN = {
    **ACCOUNT,
    "COREDLL.dll": ACCOUNT["COREDLL.dll"] | {
        "CloseHandle", "WaitForSingleObject", "WideCharToMultiByte", "puts"},
}
