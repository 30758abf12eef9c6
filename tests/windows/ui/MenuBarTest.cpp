/* The stand-in shell library's menu bars and dialogs. */
#include <gmock/gmock.h>

#include <atomic>

#include "helpers/DialogTest.h"

namespace {

using testing::ElementsAre;

class MenuBars : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        owner = CreateWindowExW(0, L"STATIC", L"owner", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr, nullptr,
                                nullptr);
        ASSERT_NE(nullptr, owner);
    }

    void TearDown() override {
        DestroyWindow(owner);
        DialogTest::TearDown();
    }

    [[nodiscard]] SHMENUBARINFO Request(UINT id = SIGN_IN_MENU_BAR) const {
        SHMENUBARINFO info{};
        info.cbSize = sizeof info;
        info.hwndParent = owner;
        info.dwFlags = SHCMBF_HMENU;
        info.nToolBarId = id;
        info.hInstRes = GetModuleHandleW(nullptr);
        return info;
    }

    static bool IsRefused(SHMENUBARINFO info) {
        info.hwndMB = info.hwndParent;
        return !SHCreateMenuBar(&info) && info.hwndMB == nullptr;
    }

    HWND owner = nullptr;
};

}  // namespace

TEST_F(MenuBars, AreMadeOfTheResources) {
    SHMENUBARINFO info = Request();
    ASSERT_TRUE(SHCreateMenuBar(&info));
    EXPECT_THAT(ButtonTextsOf(info.hwndMB), ElementsAre(L"Sign in", L"Menu"));
    EXPECT_THAT(ButtonCommandsOf(info.hwndMB), ElementsAre(IDOK, 0));
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(info.hwndMB, SHCMBM_GETMENU, 0, 0));
    EXPECT_THAT(ItemTextsOf(menu), ElementsAre(L"Sign In", L"Menu"));
    EXPECT_THAT(ItemTextsOf(GetSubMenu(menu, 1)), ElementsAre(L"New Account", L"Forgot", L"Cancel"));
}

TEST_F(MenuBars, AreOwnedByTheirDialogAndNotItsChildren) {
    SHMENUBARINFO info = Request();
    ASSERT_TRUE(SHCreateMenuBar(&info));
    EXPECT_EQ(owner, GetWindow(info.hwndMB, GW_OWNER));
    EXPECT_EQ(nullptr, GetWindow(owner, GW_CHILD));
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(info.hwndMB));
}

TEST_F(MenuBars, MenuGoesWithItsBar) {
    SHMENUBARINFO info = Request();
    ASSERT_TRUE(SHCreateMenuBar(&info));
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(info.hwndMB, SHCMBM_GETMENU, 0, 0));
    EXPECT_TRUE(IsMenu(menu));
    DestroyWindow(owner);
    EXPECT_FALSE(IsMenu(menu));
}

TEST_F(MenuBars, RequestOfAnotherSizeIsRefused) {
    SHMENUBARINFO info = Request();
    --info.cbSize;
    EXPECT_TRUE(IsRefused(info));
}

TEST_F(MenuBars, RequestWithoutADialogIsRefused) {
    SHMENUBARINFO info = Request();
    info.hwndParent = nullptr;
    EXPECT_FALSE(SHCreateMenuBar(&info));
}

TEST_F(MenuBars, RequestWithoutAModuleIsRefused) {
    SHMENUBARINFO info = Request();
    info.hInstRes = nullptr;
    EXPECT_TRUE(IsRefused(info));
}

TEST_F(MenuBars, RequestOfAnUnknownKindIsRefused) {
    SHMENUBARINFO info = Request();
    info.dwFlags = 0;
    EXPECT_TRUE(IsRefused(info));
}

TEST_F(MenuBars, NumberWithoutResourcesIsRefused) {
    EXPECT_TRUE(IsRefused(Request(116)));
    EXPECT_TRUE(IsRefused(Request(0)));
}

TEST_F(MenuBars, NumberWithoutRCDATAIsRefused) {
    EXPECT_TRUE(IsRefused(Request(MENU_ALONE)));
}

TEST_F(MenuBars, RCDATAThatIsTooShortIsRefused) {
    EXPECT_TRUE(IsRefused(Request(SHORT_MENU_BAR)));
}

TEST_F(MenuBars, ButtonWithoutATextIsRefused) {
    EXPECT_TRUE(IsRefused(Request(TEXTLESS_MENU_BAR)));
}

TEST_F(MenuBars, NoRequestIsRefused) {
    EXPECT_FALSE(SHCreateMenuBar(nullptr));
}

TEST_F(MenuBars, ButtonsKeepTheirCommandsWhateverTheyAreTold) {
    SHMENUBARINFO info = Request(DONE_CANCEL_MENU_BAR);
    ASSERT_TRUE(SHCreateMenuBar(&info));
    WCHAR text[] = L"Fini";
    TBBUTTONINFOW button{};
    button.cbSize = sizeof button;
    button.dwMask = TBIF_TEXT | TBIF_COMMAND;
    button.pszText = text;
    EXPECT_TRUE(SendMessageW(info.hwndMB, TB_SETBUTTONINFOW, IDOK, reinterpret_cast<LPARAM>(&button)));
    EXPECT_THAT(ButtonTextsOf(info.hwndMB), ElementsAre(L"Fini", L"Cancel"));
    EXPECT_THAT(ButtonCommandsOf(info.hwndMB), ElementsAre(IDOK, IDCANCEL));
    EXPECT_EQ(DWORD{TBIF_TEXT | TBIF_COMMAND}, button.dwMask);
}

TEST_F(MenuBars, ButtonsFitBesideEachOther) {
    SHMENUBARINFO info = Request();
    ASSERT_TRUE(SHCreateMenuBar(&info));
    RECT left{};
    RECT right{};
    SendMessageW(info.hwndMB, TB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&left));
    SendMessageW(info.hwndMB, TB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&right));
    EXPECT_LT(0, left.right - left.left);
    EXPECT_LE(left.right, right.left);
    EXPECT_LT(right.left, right.right);
    EXPECT_EQ(left.top, right.top);
}

TEST_F(MenuBars, KeysF1AndF2AreTheSoftKeys) {
    for (const auto& [key, result] : {std::pair{VK_F1, IDOK}, std::pair{VK_F2, IDCANCEL}}) {
        FormDialog form;
        EXPECT_EQ(result, Show(form, [key = key](const ScreenUser& user) {
                      PressKey(user.WaitForDialog(L"A form"), static_cast<WORD>(key));
                  }));
    }
}

TEST_F(MenuBars, PressedButtonReportsTheBarAndAMenuItemDoesNot) {
    FormDialog form;
    form.menuBarId = SIGN_IN_MENU_BAR;
    std::vector<HWND> sources;
    std::vector<int> commands;
    std::atomic<int> handled = 0;
    form.onCommand = [&](int id, HWND control, int notification) {
        if (id != IDOK && id != NEW_ACCOUNT_COMMAND) return;
        EXPECT_EQ(0, notification);
        commands.push_back(id);
        sources.push_back(control);
        ++handled;
    };
    HWND bar = nullptr;
    Show(form, [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        bar = MenuBarOf(dialog);
        PressKey(dialog, VK_F2);
        user.WaitForMenu();
        PressKey(dialog, VK_DOWN);
        PressKey(dialog, VK_RETURN);
        user.WaitUntil("the command", [&] { return handled == 1; });
        PressButton(bar, 0);
    });
    EXPECT_THAT(commands, ElementsAre(NEW_ACCOUNT_COMMAND, IDOK));
    EXPECT_THAT(sources, ElementsAre(nullptr, bar));
}

TEST_F(MenuBars, MenuThatIsClosedSendsNothing) {
    FormDialog form;
    form.menuBarId = SIGN_IN_MENU_BAR;
    int commands = 0;
    form.onCommand = [&](int id, HWND, int) {
        if (id == NEW_ACCOUNT_COMMAND || id == FORGOT_COMMAND || id == 0) ++commands;
    };
    Show(form, [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        PressButton(MenuBarOf(dialog), 1);
        user.WaitForMenu();
        PressKey(dialog, VK_ESCAPE);
        PressKey(dialog, VK_F1);
    });
    EXPECT_EQ(0, commands);
}

TEST_F(MenuBars, PressingOneLeavesTheFocusInTheDialog) {
    FormDialog form;
    Show(form, [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        const HWND bar = MenuBarOf(dialog);
        Type(dialog, FORM_FIELD, L"x");
        EXPECT_EQ(MA_NOACTIVATE, SendMessageW(bar, WM_MOUSEACTIVATE, 0, 0));
        EXPECT_EQ(FORM_FIELD, FocusOf(dialog));
        PressButton(bar, 1);
    });
}

TEST_F(MenuBars, DialogIsPreparedOnlyAsItsFlagsSay) {
    RECT before{};
    RECT after{};
    GetWindowRect(owner, &before);
    SHINITDLGINFO info{SHIDIM_FLAGS, owner, 0};
    EXPECT_TRUE(SHInitDialog(&info));
    GetWindowRect(owner, &after);
    EXPECT_TRUE(EqualRect(&before, &after));
    info.dwMask = 0;
    EXPECT_FALSE(SHInitDialog(&info));
    info = {SHIDIM_FLAGS, nullptr, SHIDIF_SIZEDLGFULLSCREEN};
    EXPECT_FALSE(SHInitDialog(&info));
    EXPECT_FALSE(SHInitDialog(nullptr));
}
