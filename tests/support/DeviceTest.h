/* The machine under a test, the same in every ring: a folder of its own, and the registry.
 *
 * Natively that is a simulated handheld, new for every test, which also fails a test that leaves a handle or
 * a file open or that closes one twice. In the windows ring it is Windows itself: the folder is a real one
 * and the registry values are really written; both are removed after the test. */
#pragma once

#include "Platform.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "text/WideString.h"

class DeviceTest : public ::testing::Test {
public:
    /* The path, in the device's own form, of `name` in the test's own folder. The folder is there and empty
     * when the test begins. */
    static WideString PathOf(WideStringView name);

    /* Makes the file at `path` hold exactly `bytes`. */
    static void PutFile(const WideString& path, std::string_view bytes);

    /* The bytes of the file at `path`, or nothing when it cannot be read. */
    static std::optional<std::string> TakeFile(const WideString& path);

    /* Makes a folder at `path`; its parent must be there. */
    static void MakeFolder(const WideString& path);

    /* Stores a registry value below HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE exactly as given: no terminator
     * is added, and the length of `bytes` need not fit `type`. */
    static void SetRegistryValue(HKEY root, const WCHAR* key, const WCHAR* name, DWORD type,
                                 std::string_view bytes);

    /* The bytes of UTF-16 text as they lie in memory, without a terminator. */
    static std::string BytesOf(WideStringView text);

protected:
    void SetUp() override;
    void TearDown() override;
};
