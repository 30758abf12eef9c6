/* The exchange with the service in which an account is signed in to. Nothing is said to the user. */
#pragma once

#include "account/Account.h"

/* What the service has answered. */
struct SignInAnswer {
    int32_t status = -1; /* also when none has come */
    int32_t state = -1;  /* the account's, after status 0; also when none has come */
    DWORD cause = 0;     /* as LMOnline.h tells it; 0 when status 0 and a state have come */

    [[nodiscard]] bool IsAccepted() const { return status == 0 && state == 0; }
};

/* The statuses whose meaning is known. */
inline constexpr int32_t unknownUserStatus = 4;
inline constexpr int32_t wrongPasswordStatus = 5;

/* Whether there is something to send: without a user ID or a password no service is asked. */
bool HasCredentials(const Account& account);

/* Asks the service whether it accepts the user ID, the password and the product code. Brings up the data
 * connection first, and blocks until the service has answered. */
SignInAnswer AskToSignIn(const Account& account) noexcept;
