#include "account/SignInDialog.h"

#include "account/AccountSettings.h"
#include "account/CreateAccountDialog.h"
#include "account/SecretText.h"
#include "account/SignIn.h"
#include "base/Contained.h"
#include "base/LastError.h"
#include "frame/OpenWithShell.h"
#include "transport/OnlineConfiguration.h"

bool RunSignInDialog(Account& account, HWND owner) noexcept {
    return Contained(false, [&] {
        SignInDialog dialog(account);
        return dialog.DoModal(owner) == IDOK;
    });
}

SignInDialog::SignInDialog(Account& signedIn) : Dialog(SIGN_IN_DIALOG), account(signedIn) {
    menuBarId = SIGN_IN_MENU_BAR;
}

BOOL SignInDialog::OnInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    const bool isKnown = !account.userId.empty();
    SetItemText(USER_ID_FIELD, account.userId);
    if (isKnown) SetItemText(PASSWORD_FIELD, account.password);
    if (account.fieldLimit > 0) LimitItemTexts({USER_ID_FIELD, PASSWORD_FIELD}, account.fieldLimit);
    SetFocus(GetDlgItem(window, isKnown ? PASSWORD_FIELD : USER_ID_FIELD));
    return FALSE;
}

void SignInDialog::OnOK() {
    ReadCredentials();
    account.savePassword = SendDlgItemMessageW(window, SAVE_PASSWORD_BOX, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (!SignIn(account, window)) {
        account.password.clear();
        return;
    }
    account.savingError = SaveAccountSettings(account) ? ERROR_SUCCESS : ErrorOfFailedCall();
    Dialog::OnOK();
}

void SignInDialog::OnDialogCommand(int id, HWND control, int notification) {
    if (!IsWindowEnabled(window)) return;
    if (id == NEW_ACCOUNT_COMMAND && notification == 0) return CreateNewAccount();
    if (id == FORGOT_COMMAND && notification == 0) return OpenForgotPage();
    Dialog::OnDialogCommand(id, control, notification);
}

void SignInDialog::ReadCredentials() {
    account.userId = GetItemText(USER_ID_FIELD);
    ReplaceSecret(account.password, GetItemText(PASSWORD_FIELD));
}

void SignInDialog::CreateNewAccount() {
    ReadCredentials();
    if (!CreateAccount(account, window)) return;
    SetItemText(USER_ID_FIELD, account.userId);
    SetItemText(PASSWORD_FIELD, account.password);
    Dialog::OnOK();
}

void SignInDialog::OpenForgotPage() {
    OpenWithShell(WideString(TEXT("http://")) + webHost + TEXT("/forgot.htm"), window, false);
}
