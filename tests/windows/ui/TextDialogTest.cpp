/* Dialogs that show one text. */
#include <gmock/gmock.h>

#include "helpers/DialogTest.h"
#include "ui/TextDialog.h"

namespace {

class TextDialogs : public DialogTest {
protected:
    static int Run(const ScreenUser::Script& script, uint32_t menuBar = SIGN_IN_MENU_BAR,
                   uint32_t id = TEXT_DIALOG) {
        const ScreenUser user(script);
        return RunTextDialog(id, nullptr, L"Hello, &world.", SHOWN_TEXT, menuBar);
    }

    /* Chooses an item of the menu bar's pop-up. */
    static void Choose(const ScreenUser& user, HWND dialog, int item) {
        PressButton(MenuBarOf(dialog), 1);
        user.WaitForMenu();
        for (int i = 0; i <= item; ++i)
            PressKey(dialog, VK_DOWN);
        PressKey(dialog, VK_RETURN);
    }
};

}  // namespace

TEST_F(TextDialogs, ShowTheTextAsItIs) {
    UseFrench("Hello world\tBonjour\nAbout\tInfo\n");
    Run([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"Info");
        EXPECT_EQ(L"Hello, &world.", TextOf(dialog, SHOWN_TEXT));
        PressButton(MenuBarOf(dialog), 0);
    });
}

TEST_F(TextDialogs, ControlZeroShowsNoText) {
    const ScreenUser user([](const ScreenUser& acting) {
        const HWND dialog = acting.WaitForDialog(L"About");
        EXPECT_EQ(L"Nothing yet", TextOf(dialog, SHOWN_TEXT));
        PressButton(MenuBarOf(dialog), 0);
    });
    EXPECT_EQ(IDOK, RunTextDialog(TEXT_DIALOG, nullptr, L"Hello", 0, DONE_CANCEL_MENU_BAR));
}

TEST_F(TextDialogs, LeftSoftKeyGivesOK) {
    EXPECT_EQ(IDOK,
              Run([](const ScreenUser& user) { PressButton(MenuBarOf(user.WaitForDialog(L"About")), 0); }));
}

TEST_F(TextDialogs, MenuCommandIsTheResult) {
    EXPECT_EQ(NEW_ACCOUNT_COMMAND,
              Run([](const ScreenUser& user) { Choose(user, user.WaitForDialog(L"About"), 0); }));
}

TEST_F(TextDialogs, EveryMenuCommandIsAResult) {
    EXPECT_EQ(FORGOT_COMMAND,
              Run([](const ScreenUser& user) { Choose(user, user.WaitForDialog(L"About"), 1); }));
}

TEST_F(TextDialogs, CancelOfTheMenuGivesCancel) {
    EXPECT_EQ(IDCANCEL, Run([](const ScreenUser& user) { Choose(user, user.WaitForDialog(L"About"), 2); }));
}

TEST_F(TextDialogs, RightSoftKeyGivesCancel) {
    EXPECT_EQ(IDCANCEL,
              Run([](const ScreenUser& user) { PressButton(MenuBarOf(user.WaitForDialog(L"About")), 1); },
                  DONE_CANCEL_MENU_BAR));
}

TEST_F(TextDialogs, OkWithANotificationGivesOK) {
    TextDialog dialog(TEXT_DIALOG, L"Hello", SHOWN_TEXT, DONE_CANCEL_MENU_BAR);
    EXPECT_EQ(IDOK, Show(dialog, [](const ScreenUser& user) {
                  PostMessageW(user.WaitForDialog(L"About"), WM_COMMAND, MAKEWPARAM(IDOK, 1), 0);
              }));
    // It was no command: the dialog has ended by itself.
    EXPECT_EQ(IDCANCEL, dialog.resultCommand);
}

TEST_F(TextDialogs, OtherNotificationsDoNothing) {
    EXPECT_EQ(IDOK, Run([](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"About");
                  SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(SHOWN_TEXT, STN_DBLCLK), 0);
                  EXPECT_TRUE(IsWindow(dialog));
                  PressButton(MenuBarOf(dialog), 0);
              }));
}

TEST_F(TextDialogs, BackKeyCancels) {
    EXPECT_EQ(IDCANCEL,
              Run([](const ScreenUser& user) { PressKey(user.WaitForDialog(L"About"), VK_ESCAPE); }));
    EXPECT_EQ(0, ShellCalls().overrides);
}

TEST_F(TextDialogs, DialogThatCannotBeShownGivesCancel) {
    EXPECT_EQ(IDCANCEL, Run([](const ScreenUser& user) { user.TakeMessage(L"Internal error"); },
                            DONE_CANCEL_MENU_BAR, 999));
}
