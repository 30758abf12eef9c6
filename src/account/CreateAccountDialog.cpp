#include "account/CreateAccountDialog.h"

#include "account/AccountProgram.h"
#include "account/AccountSettings.h"
#include "account/SecretText.h"
#include "base/Contained.h"
#include "base/LastError.h"
#include "settings/Settings.h"
#include "transport/CgiRequest.h"
#include "transport/OnlineConfiguration.h"
#include "transport/Protocol.h"
#include "ui/MessageBoxes.h"

namespace {

enum Answer : int32_t { created = 0, nameTaken = 2, shortPassword = 3, emailTaken = 13, badEmail = 14 };

}  // namespace

bool CreateAccount(Account& account, HWND owner) noexcept {
    return Contained(false, [&] {
        CreateAccountDialog dialog(account);
        return dialog.DoModal(owner) == IDOK;
    });
}

CreateAccountDialog::CreateAccountDialog(Account& created)
    : Dialog(CREATE_ACCOUNT_DIALOG), account(created) {}

BOOL CreateAccountDialog::OnInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    SetItemText(USER_ID_FIELD, account.userId);
    SetItemText(PASSWORD_FIELD, account.password);
    SetItemText(NAME_FIELD, name);
    SetItemText(EMAIL_FIELD, email);
    if (account.fieldLimit > 0)
        LimitItemTexts({USER_ID_FIELD, PASSWORD_FIELD, RETYPE_FIELD}, account.fieldLimit);
    SendDlgItemMessageW(window, WANTS_UPDATES_BOX, BM_SETCHECK, wantsUpdates ? BST_CHECKED : BST_UNCHECKED,
                        0);
    return TRUE;
}

void CreateAccountDialog::OnOK() {
    if (GetItemText(PASSWORD_FIELD) != GetItemText(RETYPE_FIELD)) {
        Tell(TEXT("The passwords do not match"));
        SetItemText(RETYPE_FIELD, {});
        return;
    }
    const Installation installation = ReadInstallation();
    ReadFields();
    // Bytes of the code that do not arrive stay as they are here: half a code must not look like success.
    int32_t code = -1;
    const auto ask = [&] { return AskService(installation, code); };
    const Exchange exchange = Contained(Exchange::NotSent, ask);
    if (exchange == Exchange::NotSent) return Tell(TEXT("Problem communicating over the internet"));
    if (exchange == Exchange::Unreadable) return Tell(TEXT("Internal server error"));
    TakeAnswer(code);
}

void CreateAccountDialog::OnDialogCommand(int id, HWND control, int notification) {
    if (IsWindowEnabled(window)) Dialog::OnDialogCommand(id, control, notification);
}

CreateAccountDialog::Installation CreateAccountDialog::ReadInstallation() const {
    const WideString key = TEXT("SOFTWARE\\") + account.productName;
    return {ReadRegistryDword(HKEY_LOCAL_MACHINE, key.c_str(), TEXT("web_vendor"), 0),
            ReadSettingString(TEXT("settings"), TEXT("Language"), TEXT("English"))};
}

void CreateAccountDialog::ReadFields() {
    account.userId = GetItemText(USER_ID_FIELD);
    ReplaceSecret(account.password, GetItemText(PASSWORD_FIELD));
    name = GetItemText(NAME_FIELD);
    email = GetItemText(EMAIL_FIELD);
    wantsUpdates = SendDlgItemMessageW(window, WANTS_UPDATES_BOX, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

CreateAccountDialog::Exchange CreateAccountDialog::AskService(const Installation& installation,
                                                              int32_t& code) const {
    const uint8_t updates = wantsUpdates ? 1 : 0;
    CgiRequest request(serviceHost, accountProgram, true, false);
    request.WriteInt32(accountCreationCode);
    request.WriteString(account.userId);
    request.WriteString(account.password);
    request.WriteString(name);
    request.WriteString(referrer);
    request.WriteString(email);
    request.WriteBytes(&updates, sizeof(updates));
    request.WriteInt32(static_cast<int32_t>(installation.vendor));
    request.WriteString(installation.language);
    if (!request.SendRequest()) return Exchange::NotSent;
    return request.ReadInt32(code) ? Exchange::Answered : Exchange::Unreadable;
}

void CreateAccountDialog::TakeAnswer(int32_t code) {
    switch (code) {
        case created:
            account.savingError = SaveAccountSettings(account) ? ERROR_SUCCESS : ErrorOfFailedCall();
            return Dialog::OnOK();
        case nameTaken:
            return Tell(
                TEXT("This user name is already in use.\nIf this is your account and you have forgotten the "
                     "User ID or Password, click \"Cancel\" and \"I Forgot\" to recover them."));
        case shortPassword:
            return Tell(TEXT("The password must be at least 6 letters or numbers"));
        case emailTaken:
            Tell(TEXT(
                "An account already exists with the same email address. Please sign in to that account.\n"
                "If you have forgotten the User ID or Password, click \"Forgot\" to recover them."));
            return OnCancel();
        case badEmail:
            return Tell(TEXT("You must provide a valid email address."));
        default:
            ShowTranslatedMessageFormat(window, MB_ICONHAND, TEXT("The server returned error code %d"), code);
    }
}

void CreateAccountDialog::Tell(const WCHAR* text) const {
    ShowTranslatedMessage(window, MB_ICONHAND, text);
}
