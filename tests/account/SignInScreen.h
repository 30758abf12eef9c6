/* The sign-in dialog, and what the user does with it. */
#pragma once

#include "account/SignInDialog.h"

#include "account/AccountTest.h"

class SignInScreen : public AccountTest {
protected:
    bool Run(const DialogScript& script) {
        device.UseDialog(script);
        return RunSignInDialog(account, nullptr);
    }

    static void Leave(DialogUser& user) { user.ChooseMenuItem(IDCANCEL); }

    static void TypeCredentials(DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        user.Type(PASSWORD_FIELD, u"Secret-1");
    }
};
