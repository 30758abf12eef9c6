/* Creating an account, with a dialog. */
#pragma once

#include "account/Account.h"
#include "ui/Dialog.h"

/* Asks for the data of a new account until the service has created it, or until the user gives up. A new
 * account is saved as after signing in. True: `account` holds the new credentials. False: no account was
 * created; `account` holds what was tried last. */
bool CreateAccount(Account& account, HWND owner) noexcept;

class CreateAccountDialog final : public Dialog {
public:
    explicit CreateAccountDialog(Account& created);

    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

    /* Ignores commands that arrive while a message box is shown: they were pressed before it appeared. */
    void OnDialogCommand(int id, HWND control, int notification) override;

private:
    struct Installation {
        uint32_t vendor;     /* 0: no vendor */
        WideString language; /* the user interface's, by its English name */
    };

    enum class Exchange { NotSent, Unreadable, Answered };

    [[nodiscard]] Installation ReadInstallation() const;
    void ReadFields();
    Exchange AskService(const Installation& installation, int32_t& code) const;
    void TakeAnswer(int32_t code);
    void Tell(const WCHAR* text) const;

    Account& account;
    WideString name;
    WideString referrer; /* sent with the account, always empty */
    WideString email;
    bool wantsUpdates = true;
};
