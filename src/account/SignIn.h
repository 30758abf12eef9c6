/* The check of an account with the service. */
#pragma once

#include "account/Account.h"

/* Whether the service accepts the user ID, the password and the product code. When it does not, or cannot be
 * reached, or there is nothing to check, the user has been told so in a box owned by `owner`. Blocks until
 * the service has answered. */
bool SignIn(const Account& account, HWND owner) noexcept;
