/* Signing in, with a dialog. */
#pragma once

#include "account/Account.h"
#include "ui/Dialog.h"

/* Asks for user ID and password until the service accepts them, which saves them, or until the user gives up.
 * On the way the user may create an account, which counts as signing in. True: signed in, `account` holds the
 * credentials. False: not, or the dialog could not be shown, of which the user has been told if there was
 * memory for it; `account` holds what was tried last, without the password if that was a sign-in. */
bool RunSignInDialog(Account& account, HWND owner) noexcept;

class SignInDialog final : public Dialog {
public:
    explicit SignInDialog(Account& signedIn);

    /* "Save password" is unticked each time, whatever was saved. */
    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;

    void OnOK() override;

    /* What was pressed before a message came up, and arrives while it is shown, counts for nothing. */
    void OnDialogCommand(int id, HWND control, int notification) override;

private:
    void ReadCredentials();
    void CreateNewAccount();
    void OpenForgotPage();

    Account& account;
};
