/* Translation of real windows, menus and tool bars. */
#include <gmock/gmock.h>

#include <cstddef>

#include "helpers/DialogTest.h"
#include "ui/TranslationCatalogue.h"
#include "ui/WindowTranslation.h"

namespace {

using testing::Each;
using testing::ElementsAre;

// What the handheld's functions are told of these structures.
static_assert(offsetof(MENUITEMINFOW, hbmpItem) == 44);
static_assert(sizeof(TBBUTTONINFOW) == 32);
static_assert(sizeof(SHELLEXECUTEINFOW) == 60);
static_assert(sizeof(SHMENUBARINFO) == 36);
static_assert(TB_GETBUTTON == 0x417 && TB_BUTTONCOUNT == 0x418);
static_assert(TB_GETBUTTONINFOW == 0x43F && TB_SETBUTTONINFOW == 0x440);
static_assert(SHCMBM_GETMENU == 0x592 && SHCMBM_OVERRIDEKEY == 0x593);

class WindowTranslation : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        PutFile(PathOf(L"Texts"), "Open\tOuvrir\nOther\tAutre\n");
        ASSERT_TRUE(translationCatalogue.LoadTranslationFile(PathOf(L"Texts")));
    }

    static HMENU MenuOf(const std::vector<std::wstring>& texts) {
        const HMENU menu = CreatePopupMenu();
        UINT command = 100;
        for (const std::wstring& text : texts)
            AppendMenuW(menu, text.empty() ? MF_SEPARATOR : MF_STRING, command++, text.c_str());
        return menu;
    }

    static UINT TypeOf(HMENU menu, UINT position) {
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        GetMenuItemInfoW(menu, position, TRUE, &info);
        return info.fType;
    }
};

HWND MakeWindow(const WCHAR* windowClass, const std::wstring& text, HWND parent) {
    return CreateWindowExW(0, windowClass, text.c_str(), parent ? WS_CHILD : WS_POPUP, 0, 0, 50, 50, parent,
                           nullptr, nullptr, nullptr);
}

}  // namespace

TEST_F(WindowTranslation, MenuOf300ItemsIsTranslatedUpToThe256th) {
    const HMENU menu = MenuOf(std::vector<std::wstring>(300, L"Open"));
    TranslateMenu(menu);
    std::vector<std::wstring> texts = ItemTextsOf(menu);
    ASSERT_EQ(300U, texts.size());
    const std::vector<std::wstring> rest(texts.begin() + 256, texts.end());
    texts.resize(256);
    EXPECT_THAT(texts, Each(std::wstring(L"Ouvrir")));
    EXPECT_THAT(rest, Each(std::wstring(L"Open")));
    DestroyMenu(menu);
}

TEST_F(WindowTranslation, SubMenusAreTranslatedWhateverTheirDepth) {
    const HMENU menu = MenuOf({L"Other", L"Unknown"});
    const HMENU inner = MenuOf({L"Other"});
    const HMENU innermost = MenuOf({L"Open"});
    AppendMenuW(inner, MF_POPUP, reinterpret_cast<UINT_PTR>(innermost), L"Open");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(inner), L"&Open...");
    TranslateMenu(menu);
    EXPECT_THAT(ItemTextsOf(menu), ElementsAre(L"Autre", L"Unknown", L"Ouvrir"));
    EXPECT_THAT(ItemTextsOf(inner), ElementsAre(L"Autre", L"Ouvrir"));
    EXPECT_THAT(ItemTextsOf(innermost), ElementsAre(L"Ouvrir"));
    EXPECT_EQ(inner, GetSubMenu(menu, 2));
    DestroyMenu(menu);
}

TEST_F(WindowTranslation, SeparatorsAreSkippedAndCommandsKept) {
    const HMENU menu = MenuOf({L"Open", L"", L"Other"});
    TranslateMenu(menu);
    EXPECT_THAT(ItemTextsOf(menu), ElementsAre(L"Ouvrir", L"", L"Autre"));
    EXPECT_EQ(UINT{MFT_SEPARATOR}, TypeOf(menu, 1));
    EXPECT_EQ(102U, GetMenuItemID(menu, 2));
    DestroyMenu(menu);
}

TEST_F(WindowTranslation, TranslatedItemLosesTheOtherBitsOfItsType) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING | MFT_RADIOCHECK, 1, L"Open");
    AppendMenuW(menu, MF_STRING | MFT_RADIOCHECK, 2, L"Unknown");
    const UINT before = TypeOf(menu, 1);
    TranslateMenu(menu);
    EXPECT_EQ(UINT{MFT_STRING}, TypeOf(menu, 0));
    EXPECT_EQ(before, TypeOf(menu, 1));
    DestroyMenu(menu);
}

TEST_F(WindowTranslation, EmptyMenuAndNoMenuAreLeftAlone) {
    const HMENU menu = CreatePopupMenu();
    TranslateMenu(menu);
    EXPECT_EQ(0, GetMenuItemCount(menu));
    DestroyMenu(menu);
    TranslateMenu(nullptr);
}

TEST_F(WindowTranslation, EveryDescendantOfAWindowIsTranslated) {
    const HWND window = MakeWindow(L"STATIC", L"Open", nullptr);
    const HWND child = MakeWindow(L"STATIC", L"Other", window);
    const HWND grandchild = MakeWindow(L"BUTTON", L"&Open...", child);
    const HWND sibling = MakeWindow(L"EDIT", L"Open", window);
    const HWND unknown = MakeWindow(L"STATIC", L"Unknown", window);
    TranslateWindowTree(window);
    EXPECT_EQ(L"Ouvrir", TextOf(window));
    EXPECT_EQ(L"Autre", TextOf(child));
    EXPECT_EQ(L"Ouvrir", TextOf(grandchild));
    EXPECT_EQ(L"Ouvrir", TextOf(sibling));
    EXPECT_EQ(L"Unknown", TextOf(unknown));
    DestroyWindow(window);
}

TEST_F(WindowTranslation, WindowWithoutATextIsNotHarvested) {
    const HWND window = MakeWindow(L"STATIC", L"", nullptr);
    EXPECT_TRUE(TranslateWindowText(window));
    EXPECT_TRUE(TranslateWindowText(nullptr));
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
    DestroyWindow(window);
}

TEST_F(WindowTranslation, Only4999UnitsOfAWindowsTextCount) {
    const HWND window = MakeWindow(L"EDIT", std::wstring(6000, L'x'), nullptr);
    EXPECT_TRUE(TranslateWindowText(window));
    EXPECT_THAT(translationCatalogue.UntranslatedTexts(), ElementsAre(std::wstring(4999, L'x')));
    EXPECT_EQ(6000, GetWindowTextLengthW(window));
    DestroyWindow(window);
}
