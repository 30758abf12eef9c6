/* The readers' calls, one by one. */
#include <gtest/gtest.h>

#include "Device.h"
#include "settings/Settings.h"
#include "support/DeviceTest.h"

using namespace std::string_literals;

namespace {

class SettingsCalls : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                         BytesOf(TEXT("Dutch")));
        SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Number"), REG_DWORD,
                         "\5\0\0\0"s);
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(SettingsCalls, TextIsQueriedInto522BytesOfAKeyOpenedForReading) {
    ReadSettingString(TEXT("settings"), TEXT("Language"), {});
    const std::vector<std::string> expected = {
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Orvande", 0, 0x00020019) = 0, key 1)",
        R"(RegQueryValueExW(key 1, "Language", 522) = 0, type 1, 10 bytes)",
        "RegCloseKey(key 1) = 0",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(SettingsCalls, NumberIsQueriedIntoFourBytes) {
    EXPECT_EQ(5u, ReadRegistryDword(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Number"), 0));
    const std::vector<std::string> expected = {
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Orvande", 0, 0x00020019) = 0, key 1)",
        R"(RegQueryValueExW(key 1, "Number", 4) = 0, type 4, 4 bytes)",
        "RegCloseKey(key 1) = 0",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(SettingsCalls, KeyThatCannotBeOpenedGivesTheDefaultAndIsNotClosed) {
    device.FailCall("RegOpenKeyExW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(TEXT("d"), ReadSettingString(TEXT("settings"), TEXT("Language"), TEXT("d")));
    EXPECT_EQ(0u, device.CountCalls("RegQueryValueExW"));
    EXPECT_EQ(0u, device.CountCalls("RegCloseKey"));
}

TEST_F(SettingsCalls, FailedQueryGivesTheDefaultAndClosesTheKey) {
    device.FailCall("RegQueryValueExW", 1, ERROR_BADKEY, Failing::FromThereOn);
    EXPECT_EQ(TEXT("d"), ReadSettingString(TEXT("settings"), TEXT("Language"), TEXT("d")));
    EXPECT_EQ(9u, ReadRegistryDword(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Number"), 9));
    EXPECT_EQ(2u, device.CountCalls("RegCloseKey"));
}
