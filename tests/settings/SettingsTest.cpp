#include "settings/Settings.h"

#include <gtest/gtest.h>

#include "support/DeviceTest.h"

using namespace std::string_literals;

namespace {

constexpr WCHAR productKey[] = TEXT("Software\\Orvande");
constexpr WCHAR testKey[] = TEXT("Software\\Orvande Test");

/* A literal with all its units, NULs among them, without the terminator that the compiler adds. */
template <size_t size>
WideStringView Whole(const WCHAR (&literal)[size]) {
    return WideStringView(literal, size - 1);
}

class Settings : public DeviceTest {
protected:
    static WideString StoredText(DWORD type, std::string_view bytes) {
        SetRegistryValue(HKEY_CURRENT_USER, testKey, TEXT("Text"), type, bytes);
        return ReadRegistryString(HKEY_CURRENT_USER, testKey, TEXT("Text"), TEXT("default"));
    }

    static uint32_t StoredNumber(DWORD type, std::string_view bytes) {
        SetRegistryValue(HKEY_CURRENT_USER, testKey, TEXT("Number"), type, bytes);
        return ReadRegistryDword(HKEY_CURRENT_USER, testKey, TEXT("Number"), 77);
    }

    static std::string Units(size_t count) { return BytesOf(WideString(count, TEXT('x'))); }
};

}  // namespace

TEST_F(Settings, WithoutTheProductKeyTheLanguageIsTheDefault) {
    EXPECT_EQ(TEXT(""), ReadSettingString(TEXT("settings"), TEXT("Language"), {}));
    EXPECT_EQ(TEXT("English"), ReadSettingString(TEXT("settings"), TEXT("Language"), TEXT("English")));
}

TEST_F(Settings, SettingIsReadFromTheProductKeyOfTheUser) {
    SetRegistryValue(HKEY_CURRENT_USER, productKey, TEXT("Language"), REG_SZ,
                     BytesOf(Whole(TEXT("French\0"))));
    EXPECT_EQ(TEXT("French"), ReadSettingString(TEXT("settings"), TEXT("Language"), {}));
}

TEST_F(Settings, SectionHasNoEffect) {
    SetRegistryValue(HKEY_CURRENT_USER, productKey, TEXT("Language"), REG_SZ,
                     BytesOf(Whole(TEXT("French\0"))));
    for (const WCHAR* section :
         {TEXT("settings"), TEXT("other"), TEXT(""), static_cast<const WCHAR*>(nullptr)})
        EXPECT_EQ(TEXT("French"), ReadSettingString(section, TEXT("Language"), {}));
}

TEST_F(Settings, TextEndsAtItsFirstNul) {
    EXPECT_EQ(TEXT("ab"), StoredText(REG_SZ, BytesOf(Whole(TEXT("ab\0cd\0")))));
}

TEST_F(Settings, TextWithoutANulEndsAtItsSize) {
    EXPECT_EQ(TEXT("abc"), StoredText(REG_BINARY, BytesOf(TEXT("abc"))));
}

TEST_F(Settings, TextOfNoBytesIsEmpty) {
    EXPECT_EQ(TEXT(""), StoredText(REG_BINARY, ""));
}

TEST_F(Settings, HalfAUnitAtTheEndOfATextIsLeftOut) {
    EXPECT_EQ(TEXT("ab"), StoredText(REG_BINARY, BytesOf(TEXT("ab")) + "c"));
    EXPECT_EQ(TEXT(""), StoredText(REG_BINARY, "c"));
}

TEST_F(Settings, TypeOfATextIsNotChecked) {
    EXPECT_EQ(TEXT("%PATH%"), StoredText(REG_EXPAND_SZ, BytesOf(Whole(TEXT("%PATH%\0")))));
    EXPECT_EQ(TEXT("AB"), StoredText(REG_DWORD, BytesOf(TEXT("AB"))));
}

TEST_F(Settings, TextOf260UnitsAndItsNulIsRead) {
    EXPECT_EQ(WideString(260, TEXT('x')), StoredText(REG_BINARY, Units(260) + BytesOf(Whole(TEXT("\0")))));
}

TEST_F(Settings, TextOf261UnitsOrMoreReadsAsTheDefault) {
    EXPECT_EQ(TEXT("default"), StoredText(REG_BINARY, Units(261))) << "522 bytes without a NUL";
    EXPECT_EQ(TEXT("default"), StoredText(REG_BINARY, Units(261) + BytesOf(Whole(TEXT("\0")))));
    EXPECT_EQ(TEXT("default"), StoredText(REG_BINARY, Units(5000)));
}

TEST_F(Settings, ValueOf523BytesReadsAsTheDefaultThoughItsTextIsShort) {
    EXPECT_EQ(TEXT("default"), StoredText(REG_BINARY, BytesOf(TEXT("ab")) + std::string(519, '\0')));
}

TEST_F(Settings, ValueOf522BytesWithAnEarlyNulIsItsText) {
    EXPECT_EQ(TEXT("ab"), StoredText(REG_BINARY, BytesOf(TEXT("ab")) + std::string(518, '\0')));
}

TEST_F(Settings, AbsentTextIsTheDefault) {
    EXPECT_EQ(TEXT("d"), ReadRegistryString(HKEY_CURRENT_USER, testKey, TEXT("No"), TEXT("d"))) << "no key";
    SetRegistryValue(HKEY_CURRENT_USER, testKey, TEXT("Other"), REG_SZ, BytesOf(Whole(TEXT("x\0"))));
    EXPECT_EQ(TEXT("d"), ReadRegistryString(HKEY_CURRENT_USER, testKey, TEXT("No"), TEXT("d"))) << "no value";
}

TEST_F(Settings, NumberIsItsFourBytesLittleEndian) {
    EXPECT_EQ(0x12345678u, StoredNumber(REG_DWORD, "\x78\x56\x34\x12"));
    EXPECT_EQ(0xFFFFFFFFu, StoredNumber(REG_DWORD, "\xFF\xFF\xFF\xFF"));
}

TEST_F(Settings, FourBytesOfBinaryDataAreANumber) {
    EXPECT_EQ(0x200u, StoredNumber(REG_BINARY, "\0\2\0\0"s));
}

TEST_F(Settings, NumberStoredAsATextOfMoreThanFourBytesReadsAsTheDefault) {
    EXPECT_EQ(77u, StoredNumber(REG_SZ, BytesOf(Whole(TEXT("512\0")))));
    EXPECT_EQ(77u, StoredNumber(REG_BINARY, "\1\0\0\0\0"s));
}

TEST_F(Settings, TextOfFourBytesIsANumber) {
    EXPECT_EQ(0x31u, StoredNumber(REG_SZ, BytesOf(Whole(TEXT("1\0")))));
}

TEST_F(Settings, MissingBytesOfANumberAreZero) {
    EXPECT_EQ(0x0201u, StoredNumber(REG_BINARY, "\1\2"));
    EXPECT_EQ(0u, StoredNumber(REG_BINARY, ""));
}

TEST_F(Settings, AbsentNumberIsTheDefault) {
    EXPECT_EQ(5u, ReadRegistryDword(HKEY_CURRENT_USER, testKey, TEXT("No"), 5)) << "no key";
    SetRegistryValue(HKEY_CURRENT_USER, testKey, TEXT("Other"), REG_DWORD, "\1\0\0\0"s);
    EXPECT_EQ(5u, ReadRegistryDword(HKEY_CURRENT_USER, testKey, TEXT("No"), 5)) << "no value";
}

TEST_F(Settings, MachineWideNumberIsReadBelowTheOtherRoot) {
    SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Orvande Test"), TEXT("web_vendor"), REG_DWORD,
                     "\x2A\0\0\0"s);
    EXPECT_EQ(42u,
              ReadRegistryDword(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Orvande Test"), TEXT("web_vendor"), 0));
    EXPECT_EQ(0u,
              ReadRegistryDword(HKEY_CURRENT_USER, TEXT("SOFTWARE\\Orvande Test"), TEXT("web_vendor"), 0));
}
