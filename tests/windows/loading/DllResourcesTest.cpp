/* The resources of the DLL's file, read with the system's own functions. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "LMOnlineVersion.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScreenUser.h"
#include "resources/ResourceIds.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr LANGID english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

class DllResources : public testing::Test {
protected:
    void SetUp() override {
        path = ProgramFolder() + L"\\OrvandeOnline.dll";
        module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(nullptr, module);
    }
    void TearDown() override { FreeLibrary(module); }

    /* The resource of that number in English; empty: there is none in that language. */
    [[nodiscard]] std::string Bytes(LPCWSTR type, int number) const {
        const HRSRC resource = FindResourceExW(module, type, MAKEINTRESOURCEW(number), english);
        if (resource == nullptr) return {};
        const void* const bytes = LockResource(LoadResource(module, resource));
        return {static_cast<const char*>(bytes), SizeofResource(module, resource)};
    }

    [[nodiscard]] std::vector<WORD> Words(int number) const {
        const std::string bytes = Bytes(MAKEINTRESOURCEW(10), number);  // RT_RCDATA
        std::vector<WORD> words(bytes.size() / sizeof(WORD));
        std::memcpy(words.data(), bytes.data(), words.size() * sizeof(WORD));
        return words;
    }

    [[nodiscard]] std::wstring String(UINT number) const {
        WCHAR text[100]{};
        LoadStringW(module, number, text, 100);
        return text;
    }

    std::wstring path;
    HMODULE module = nullptr;
};

constexpr int version[] = {LM_ONLINE_VERSION_MAJOR, LM_ONLINE_VERSION_MINOR, LM_ONLINE_VERSION_PATCH};

}  // namespace

TEST_F(DllResources, VersionIsThatOfTheHeaderInEnglish) {
    DWORD ignored = 0;
    std::vector<char> info(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_FALSE(info.empty());
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(info.size()), info.data()));
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", &value, &length));
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(DWORD(MAKELONG(version[1], version[0])), fixed->dwFileVersionMS);
    EXPECT_EQ(DWORD(MAKELONG(0, version[2])), fixed->dwFileVersionLS);
    EXPECT_EQ(fixed->dwFileVersionMS, fixed->dwProductVersionMS);
    EXPECT_EQ(fixed->dwFileVersionLS, fixed->dwProductVersionLS);
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\StringFileInfo\\040904B0\\FileVersion", &value, &length));
    EXPECT_EQ(
        std::to_wstring(version[0]) + L"." + std::to_wstring(version[1]) + L"." + std::to_wstring(version[2]),
        static_cast<const WCHAR*>(value));
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\VarFileInfo\\Translation", &value, &length));
    EXPECT_EQ(DWORD{0x04B00409}, *static_cast<const DWORD*>(value));
    EXPECT_FALSE(Bytes(MAKEINTRESOURCEW(16), 1).empty());  // RT_VERSION
}

TEST_F(DllResources, TextsOfTheMenuBarsAreThere) {
    EXPECT_EQ(L"Done", String(2000));
    EXPECT_EQ(L"Cancel", String(2001));
    EXPECT_EQ(L"Menu", String(2002));
    EXPECT_EQ(L"Sign in", String(2007));
    EXPECT_EQ(L"", String(2003));
    EXPECT_FALSE(Bytes(MAKEINTRESOURCEW(6), 2000 / 16 + 1).empty());  // RT_STRING
}

TEST_F(DllResources, DoneCancelBarIsAMenuAndRCDATA) {
    const HMENU menu = LoadMenuW(module, MAKEINTRESOURCEW(115));
    EXPECT_THAT(ItemTextsOf(menu), ElementsAre(L"Done", L"Cancel"));
    EXPECT_EQ(1U, GetMenuItemID(menu, 0));
    EXPECT_EQ(2U, GetMenuItemID(menu, 1));
    DestroyMenu(menu);
    EXPECT_THAT(Words(115), ElementsAreArray({115, 2,                           //
                                              65534, 1, 4, 16, 2000, 0, 65535,  //
                                              65534, 2, 4, 16, 2001, 0, 65535}));
}

TEST_F(DllResources, SignInBarIsAMenuWithAPopupAndRCDATA) {
    const HMENU menu = LoadMenuW(module, MAKEINTRESOURCEW(107));
    EXPECT_THAT(ItemTextsOf(menu), ElementsAre(L"Sign In", L"Menu"));
    EXPECT_EQ(1U, GetMenuItemID(menu, 0));
    const HMENU popup = GetSubMenu(menu, 1);
    EXPECT_THAT(ItemTextsOf(popup), ElementsAre(L"New Account", L"Forgot", L"Cancel"));
    EXPECT_EQ(1016U, GetMenuItemID(popup, 0));
    EXPECT_EQ(1029U, GetMenuItemID(popup, 1));
    EXPECT_EQ(2U, GetMenuItemID(popup, 2));
    DestroyMenu(menu);
    EXPECT_THAT(Words(107), ElementsAreArray({107, 2,                           //
                                              65534, 1, 4, 16, 2007, 0, 65535,  //
                                              65534, 0, 4, 24, 2002, 0, 1}));
}

TEST_F(DllResources, EveryDialogAndMenuIsEnglish) {
    for (const int number : {SIGN_IN_DIALOG, CREATE_ACCOUNT_DIALOG})
        EXPECT_FALSE(Bytes(MAKEINTRESOURCEW(5), number).empty()) << number;  // RT_DIALOG
    for (const int number : {SIGN_IN_MENU_BAR, DONE_CANCEL_MENU_BAR})
        EXPECT_FALSE(Bytes(MAKEINTRESOURCEW(4), number).empty()) << number;  // RT_MENU
}

TEST_F(DllResources, DialogsOfTheTestsAreNotThere) {
    EXPECT_EQ(nullptr, FindResourceW(module, MAKEINTRESOURCEW(201), MAKEINTRESOURCEW(5)));
    EXPECT_EQ(nullptr, FindResourceW(module, MAKEINTRESOURCEW(202), MAKEINTRESOURCEW(5)));
}
