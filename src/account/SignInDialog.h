/* Signing in, with a dialog. */
#pragma once

#include "account/Account.h"
#include "ui/Dialog.h"

/* Asks for user ID and password until the service accepts them, or until the user gives up. Accepted ones are
 * saved. The user may also create an account here, which counts as signing in. True: signed in; `account`
 * holds the credentials. False: not signed in, or the dialog could not be shown (the user has been told so if
 * there was memory for it); `account` holds what was tried last, without the password if that was a
 * sign-in. */
bool RunSignInDialog(Account& account, HWND owner) noexcept;

class SignInDialog final : public Dialog {
public:
    explicit SignInDialog(Account& signedIn);

    /* The box "Save password" is unticked at first, whatever was saved. */
    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;

    void OnOK() override;

    /* Ignores commands that arrive while a message box is shown: they were pressed before it appeared. */
    void OnDialogCommand(int id, HWND control, int notification) override;

private:
    void ReadCredentials();
    void CreateNewAccount();
    void OpenForgotPage();

    Account& account;
};
