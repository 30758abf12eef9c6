/* What a DeviceTest makes of the simulated handheld. */
#include "support/DeviceTest.h"

#include <gtest/gtest-spi.h>

#include "Device.h"

namespace {

class NativeDevice : public DeviceTest {};

}  // namespace

TEST_F(NativeDevice, FolderOfTheTestIsThereAndEmpty) {
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesW(PathOf(TEXT("")).c_str()));
    EXPECT_EQ(std::nullopt, TakeFile(PathOf(TEXT("file"))));
    PutFile(PathOf(TEXT("file")), "bytes");
    EXPECT_EQ("bytes", TakeFile(PathOf(TEXT("file"))));
}

TEST_F(NativeDevice, FolderOfTheTestIsNewEachTime) {
    EXPECT_EQ(std::nullopt, TakeFile(PathOf(TEXT("file"))));
    MakeFolder(PathOf(TEXT("folder")));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesW(PathOf(TEXT("folder")).c_str()));
}

TEST_F(NativeDevice, RegistryHoldsWhatIsSet) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Key"), TEXT("Value"), REG_SZ, BytesOf(TEXT("a\x20AC")));
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, TEXT("Key"), 0, KEY_READ, &key));
    char bytes[8] = {};
    DWORD size = sizeof bytes;
    RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, reinterpret_cast<BYTE*>(bytes), &size);
    RegCloseKey(key);
    EXPECT_EQ(std::string("a\0\xAC\x20", 4), std::string(bytes, size));
}

TEST_F(NativeDevice, ViolationFailsTheTestAtOnce) {
    EXPECT_NONFATAL_FAILURE(InternetCloseHandle(reinterpret_cast<HINTERNET>(uintptr_t{0x1234})),
                            "unknown handle 0x1234 is not open");
}

TEST_F(NativeDevice, LeakFailsTheTestAtItsEnd) {
    InternetOpenW(nullptr, 0, nullptr, nullptr, 0);
    EXPECT_NONFATAL_FAILURE(TearDown(), "session 1 is still open at the end of the test");
    SetUp();
}
