/* Creating an account, with a dialog. */
#pragma once

#include "account/Account.h"
#include "ui/Dialog.h"

/* Asks for what an account needs until the service creates it, which saves it as after signing in, or until
 * the user gives up. True: `account` holds the new credentials. False: not created; `account` holds what was
 * tried last. */
bool CreateAccount(Account& account, HWND owner) noexcept;

class CreateAccountDialog final : public Dialog {
public:
    explicit CreateAccountDialog(Account& created);

    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

    /* What was pressed before a message came up, and arrives while it is shown, counts for nothing. */
    void OnDialogCommand(int id, HWND control, int notification) override;

private:
    struct Installation {
        uint32_t vendor;     /* 0: none */
        WideString language; /* of the user interface, its English name */
    };

    enum class Exchange { NotSent, Unreadable, Answered };

    [[nodiscard]] Installation ReadInstallation() const;
    void ReadFields();
    Exchange AskService(const Installation& installation, int32_t& code) const;
    void TakeAnswer(int32_t code);
    void Tell(const WCHAR* text) const;

    Account& account;
    WideString name;
    WideString referrer; /* sent with the account; nothing fills it */
    WideString email;
    bool wantsUpdates = true;
};
