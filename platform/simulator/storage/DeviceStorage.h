/* Storage's part of the device: the registry and files. Paths are the device's: they begin with a backslash,
 * `/` separates too, and existing names are found whatever their case. */
#pragma once

#include "Platform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class DeviceStorage {
public:
    // ---- The registry ---------------------------------------------------------------------------------

    /* Stores a value below HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE exactly as given, and makes its key. */
    void SetRegistryValue(HKEY root, std::u16string_view key, std::u16string_view name, DWORD type,
                          std::string_view bytes);

    /* Makes a key without values. */
    void MakeRegistryKey(HKEY root, std::u16string_view key);

    // ---- Files ----------------------------------------------------------------------------------------

    /* A new machine has the folders \Temp, \Storage, \Windows, \My Documents, \Application Data and \Program
     * Files\App. */
    void PutFile(std::u16string_view path, std::string_view bytes);       // makes missing folders, too
    void MakeFolder(std::u16string_view path);                            // makes missing parents, too
    std::optional<std::string> TakeFile(std::u16string_view path) const;  // its bytes; nothing: no such file
    bool Exists(std::u16string_view path) const;                          // a file or a folder

    /* Where the path lies on the computer that runs the test, whether it exists or not. */
    std::string HostPath(std::u16string_view path) const;

    /* Gives an existing file the read-only attribute, or takes it. Such a file is neither written nor
     * deleted. */
    void SetReadOnly(std::u16string_view path, bool isReadOnly);

    /* The bytes that can still be written to files before storage is full: the write that meets the limit is
     * cut short there and fails. The runtime's files collect 4096 bytes before they write. Nothing: no
     * limit. */
    void SetFreeStorage(std::optional<uint64_t> bytes);

    /* The path of a special folder; nothing: there is none, and asking for it fails. The personal folder
     * (CSIDL_PERSONAL) is \My Documents, CSIDL_APPDATA is \Application Data, there are no others. */
    void SetSpecialFolder(int csidl, std::optional<std::u16string> path);

protected:
    void BeginTest();
    void EndTest();
};
