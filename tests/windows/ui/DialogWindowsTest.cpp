/* Dialogs on the real system, as their users see them. */
#include <gmock/gmock.h>

#include "helpers/DialogTest.h"

namespace {

using testing::ElementsAre;

class Dialogs : public DialogTest {
protected:
    /* The command of the menu bar's left button, "Done". */
    static void Accept(HWND dialog) { PressButton(MenuBarOf(dialog), 0); }
    static void Cancel(HWND dialog) { PressButton(MenuBarOf(dialog), 1); }
};

}  // namespace

TEST_F(Dialogs, UserTypesChecksAndIsDone) {
    FormDialog form;
    std::wstring name;
    bool checked = false;
    form.onCommand = [&](int id, HWND, int) {
        if (id != IDOK) return;
        name = form.GetItemText(FORM_FIELD);
        checked = SendDlgItemMessageW(form.window, FORM_BOX, BM_GETCHECK, 0, 0) == BST_CHECKED;
    };
    EXPECT_EQ(IDOK, Show(form, [](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"A form");
                  Type(dialog, FORM_FIELD, L"Zo\x00EB");
                  EXPECT_EQ(FORM_FIELD, FocusOf(dialog));
                  EXPECT_EQ(L"Zo\x00EB", TextOf(dialog, FORM_FIELD));
                  Click(dialog, FORM_BOX);
                  Accept(dialog);
              }));
    EXPECT_EQ(L"Zo\x00EB", name);
    EXPECT_TRUE(checked);
    EXPECT_EQ(nullptr, form.window);
}

TEST_F(Dialogs, RightSoftKeyCancels) {
    FormDialog form;
    EXPECT_EQ(IDCANCEL, Show(form, [](const ScreenUser& user) { Cancel(user.WaitForDialog(L"A form")); }));
}

TEST_F(Dialogs, PressedButtonIsACommandWithItsControl) {
    FormDialog form;
    HWND pressed = nullptr;
    HWND button = nullptr;
    form.onCommand = [&](int id, HWND control, int notification) {
        if (id != FORM_BUTTON || notification != BN_CLICKED) return;
        button = GetDlgItem(form.window, FORM_BUTTON);
        pressed = control;
        form.OnOK();
    };
    EXPECT_EQ(IDOK,
              Show(form, [](const ScreenUser& user) { Click(user.WaitForDialog(L"A form"), FORM_BUTTON); }));
    EXPECT_NE(nullptr, pressed);
    EXPECT_EQ(button, pressed);
}

TEST_F(Dialogs, TextsOfControlsAreSetAndReadBack) {
    FormDialog form;
    const std::wstring longText(2000, L'x');
    form.onInit = [&] {
        form.SetItemText(FORM_FIELD, longText);
        EXPECT_EQ(longText, form.GetItemText(FORM_FIELD));
        form.SetItemText(FORM_FIELD, L"");
        EXPECT_EQ(L"", form.GetItemText(FORM_FIELD));
        form.SetItemText(999, L"nowhere");
        EXPECT_EQ(L"", form.GetItemText(999));
    };
    Show(form, [](const ScreenUser& user) { Cancel(user.WaitForDialog(L"A form")); });
}

TEST_F(Dialogs, AreEnglishWithoutALanguage) {
    FormDialog form;
    Show(form, [](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        EXPECT_EQ(L"Choices:", TextOf(dialog, FORM_GROUP));
        EXPECT_EQ(L"Remember", TextOf(dialog, FORM_BOX));
        EXPECT_EQ(L"&Open...", TextOf(dialog, FORM_BUTTON));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Done", L"Cancel"));
        Cancel(dialog);
    });
}

TEST_F(Dialogs, AreFrenchWithAFrenchFileBesideTheProgram) {
    UseFrench(
        "A form\tUn formulaire\nChoices\tChoix\nName\tNom\nRemember\tRetenir\nOpen\tOuvrir\n"
        "Done\tFini\nCancel\tAnnuler\n");
    FormDialog form;
    EXPECT_EQ(IDOK, Show(form, [](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"Un formulaire");
                  EXPECT_EQ(L"Choix", TextOf(dialog, FORM_GROUP));
                  EXPECT_EQ(L"Nom", TextOf(GetWindow(GetDlgItem(dialog, FORM_GROUP), GW_HWNDNEXT)));
                  EXPECT_EQ(L"Retenir", TextOf(dialog, FORM_BOX));
                  EXPECT_EQ(L"Ouvrir", TextOf(dialog, FORM_BUTTON));
                  EXPECT_EQ(L"", TextOf(dialog, FORM_FIELD));
                  EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Fini", L"Annuler"));
                  Accept(dialog);
              }));
}

TEST_F(Dialogs, TranslatedButtonsKeepTheirCommands) {
    UseFrench("Done\tFini\nCancel\tAnnuler\n");
    FormDialog form;
    EXPECT_EQ(IDCANCEL, Show(form, [](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"A form");
                  EXPECT_THAT(ButtonCommandsOf(MenuBarOf(dialog)), ElementsAre(IDOK, IDCANCEL));
                  Cancel(dialog);
              }));
    const StandInShellRecord calls = ShellCalls();
    EXPECT_EQ(2, calls.buttons);
    EXPECT_EQ(IDCANCEL, calls.buttonCommand);
    EXPECT_EQ(32U, calls.button.cbSize);
    EXPECT_EQ(0x22U, calls.button.dwMask);
    EXPECT_EQ(0, calls.button.idCommand);
    EXPECT_EQ(7, calls.button.cchText);
}

TEST_F(Dialogs, TranslationThatIsTheSameTouchesNoButton) {
    UseFrench("Done\tDone\n");
    FormDialog form;
    Show(form, [](const ScreenUser& user) { Cancel(user.WaitForDialog(L"A form")); });
    EXPECT_EQ(0, ShellCalls().buttons);
}

TEST_F(Dialogs, MenuBarAndItsPopupAreFrench) {
    UseFrench(
        "Sign in\tSe connecter\nMenu\tMenu\nNew Account\tNouveau compte\nForgot\tOubli\nCancel\tAnnuler\n");
    FormDialog form;
    form.menuBarId = SIGN_IN_MENU_BAR;
    EXPECT_EQ(IDCANCEL, Show(form, [](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"A form");
                  EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Se connecter", L"Menu"));
                  PressButton(MenuBarOf(dialog), 1);
                  EXPECT_THAT(ItemTextsOf(user.WaitForMenu()),
                              ElementsAre(L"Nouveau compte", L"Oubli", L"Annuler"));
                  PressKey(dialog, VK_UP);
                  PressKey(dialog, VK_RETURN);
              }));
}

TEST_F(Dialogs, FillTheWorkAreaAboveTheMenuBar) {
    FormDialog form;
    Show(form, [](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        RECT screen{};
        RECT place{};
        RECT bar{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
        GetWindowRect(dialog, &place);
        GetWindowRect(MenuBarOf(dialog), &bar);
        EXPECT_EQ(screen.left, place.left);
        EXPECT_EQ(screen.right, place.right);
        EXPECT_EQ(screen.top, place.top);
        EXPECT_EQ(place.bottom, bar.top);
        EXPECT_EQ(screen.left, bar.left);
        EXPECT_EQ(screen.right, bar.right);
        EXPECT_EQ(screen.bottom, bar.bottom);
        Cancel(dialog);
    });
    const StandInShellRecord calls = ShellCalls();
    EXPECT_EQ(1, calls.dialogs);
    EXPECT_EQ(DWORD{SHIDIM_FLAGS}, calls.dialog.dwMask);
    EXPECT_EQ(DWORD{SHIDIF_SIZEDLGFULLSCREEN}, calls.dialog.dwFlags);
}

TEST_F(Dialogs, BackKeyDeletesInTheFocusedControlAndClosesNothing) {
    FormDialog form;
    EXPECT_EQ(IDOK, Show(form, [](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"A form");
                  Type(dialog, FORM_FIELD, L"Mary");
                  PressKey(dialog, VK_ESCAPE);
                  user.WaitUntil("the deleted character",
                                 [&] { return TextOf(dialog, FORM_FIELD) == L"Mar"; });
                  Accept(dialog);
              }));
    const StandInShellRecord calls = ShellCalls();
    EXPECT_EQ(1, calls.overrides);
    EXPECT_EQ(WPARAM{VK_ESCAPE}, calls.overriddenKey);
    EXPECT_EQ(0x30003, calls.overrideFlags);
    EXPECT_EQ(1, calls.backs);
    EXPECT_EQ(UINT{WM_HOTKEY}, calls.backMessage);
    EXPECT_EQ(VK_ESCAPE, HIWORD(calls.backLParam));
}

TEST_F(Dialogs, BackKeyCancelsWhereItIsNotOverridden) {
    FormDialog form;
    form.overrideBackKey = false;
    EXPECT_EQ(IDCANCEL,
              Show(form, [](const ScreenUser& user) { PressKey(user.WaitForDialog(L"A form"), VK_ESCAPE); }));
    EXPECT_EQ(0, ShellCalls().overrides);
    EXPECT_EQ(0, ShellCalls().backs);
}

TEST_F(Dialogs, OtherHotKeysAreLeftToTheDialog) {
    FormDialog form;
    LPARAM seen = 0;
    form.onMessage = [&](UINT message, WPARAM, LPARAM lParam) -> INT_PTR {
        if (message == WM_HOTKEY) seen = lParam;
        return FALSE;
    };
    Show(form, [](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        SendMessageW(dialog, WM_HOTKEY, 0, MAKELPARAM(0, VK_F3));
        Cancel(dialog);
    });
    EXPECT_EQ(MAKELPARAM(0, VK_F3), seen);
    EXPECT_EQ(0, ShellCalls().backs);
}

TEST_F(Dialogs, NumberZeroMeansNoMenuBar) {
    FormDialog form;
    form.menuBarId = 0;
    form.onInit = [&] { form.SetMenuBarButtonText(IDOK, L"nowhere"); };
    EXPECT_EQ(IDCANCEL, Show(form, [&](const ScreenUser& user) {
                  const HWND dialog = user.WaitForDialog(L"A form");
                  EXPECT_EQ(nullptr, MenuBarOf(dialog));
                  EXPECT_EQ(nullptr, form.menuBarWindow);
                  EXPECT_EQ(nullptr, form.commandMenu);
                  PressKey(dialog, VK_ESCAPE);
              }));
    EXPECT_EQ(0, ShellCalls().menuBars);
    EXPECT_EQ(0, ShellCalls().overrides);
}

TEST_F(Dialogs, TextOfAMenuBarButtonCanBeChanged) {
    FormDialog form;
    form.onInit = [&] { form.SetMenuBarButtonText(IDCANCEL, L"Back"); };
    Show(form, [](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Done", L"Back"));
        Cancel(dialog);
    });
    EXPECT_EQ(DWORD{TBIF_TEXT}, ShellCalls().button.dwMask);
}

TEST_F(Dialogs, DisableTheirOwnerWhileTheyRun) {
    FormDialog outer;
    FormDialog inner(TEXT_DIALOG);
    int innerResult = 0;
    outer.onCommand = [&](int id, HWND, int) {
        if (id == FORM_BUTTON) innerResult = inner.DoModal(outer.window);
    };
    EXPECT_EQ(IDCANCEL, Show(outer, [&](const ScreenUser& user) {
                  const HWND outside = user.WaitForDialog(L"A form");
                  const HWND outsideBar = MenuBarOf(outside);
                  Click(outside, FORM_BUTTON);
                  const HWND inside = user.WaitForDialog(L"About");
                  EXPECT_FALSE(IsWindowEnabled(outside));
                  EXPECT_EQ(outside, GetWindow(inside, GW_OWNER));
                  EXPECT_NE(outsideBar, MenuBarOf(inside));
                  PressButton(outsideBar, 0);  // does nothing: its dialog is disabled
                  Accept(inside);
                  Cancel(user.WaitForDialog(L"A form"));
              }));
    EXPECT_EQ(IDOK, innerResult);
}

TEST_F(Dialogs, MenuBarsGoWithTheirDialogs) {
    FormDialog form;
    HWND bar = nullptr;
    Show(form, [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        bar = MenuBarOf(dialog);
        EXPECT_TRUE(IsWindow(bar));
        Cancel(dialog);
    });
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(Dialogs, NumberZeroIsCancelledWithoutBeingShown) {
    FormDialog none(0);
    EXPECT_EQ(IDCANCEL, none.DoModal(nullptr));
    EXPECT_EQ(0, ShellCalls().dialogs);
}

TEST_F(Dialogs, DialogCanEndBeforeItIsShown) {
    FormDialog form;
    form.onInit = [&] { EndDialog(form.window, 77); };
    EXPECT_EQ(77, form.DoModal(nullptr));
}
