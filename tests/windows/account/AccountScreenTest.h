/* Tests of the account's dialogs on the screen: the program says who it is as a mapping application does, and
 * the settings are kept in the test's own folder. */
#pragma once

#include "helpers/DialogTest.h"

#include <optional>

#include "account/Account.h"
#include "account/AccountTexts.h"
#include "helpers/MovedFolder.h"

/* What is typed for a new account. */
struct NewAccount {
    std::wstring userId;
    std::wstring password;
    std::wstring retyped;
    std::wstring name;
    std::wstring email;
};

class AccountScreenTest : public DialogTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /* Shows the dialog for `account` to a user; whether it was signed in to, or created. */
    bool SignInAs(ScreenUser::Script script);
    bool Create(ScreenUser::Script script);

    /* The account as a program finds it at its next start. */
    void StartAgain();

    /* The sign-in dialog's commands, by its menu bar, and the other's. */
    static void PressSignIn(HWND dialog) { PressButton(MenuBarOf(dialog), 0); }
    static void ChooseNewAccount(const ScreenUser& user, HWND dialog) { Choose(user, dialog, 0); }
    static void ChooseForgot(const ScreenUser& user, HWND dialog) { Choose(user, dialog, 1); }
    static void ChooseCancel(const ScreenUser& user, HWND dialog) { Choose(user, dialog, 2); }
    static void PressDone(HWND dialog) { PressButton(MenuBarOf(dialog), 0); }
    static void PressCancel(HWND dialog) { PressButton(MenuBarOf(dialog), 1); }

    static void TypeCredentials(HWND dialog, const std::wstring& userId, const std::wstring& password);

    /* Replaces all fields of a new account. */
    static void Fill(HWND dialog, const NewAccount& values);

    /* Expects a message box with that owner, text and icon (IDI_..., null for none), which the user closes,
     * and that the owner can be used again. */
    static void ExpectMessage(const ScreenUser& user, HWND owner, const std::wstring& text,
                              const WCHAR* icon);

    /* What saving the account has written; "no file" without one. */
    static std::string SettingsFile();

    /* The settings as somebody left them. */
    static void PutSettings(std::string_view bytes);

    /* The settings' path. The folder is there from the first use on. */
    static std::wstring SettingsPath();

    Account account;

private:
    static void Choose(const ScreenUser& user, HWND dialog, int item);

    std::optional<MovedFolder> applicationData;
};
