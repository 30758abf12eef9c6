/* Checks an account with the service. */
#pragma once

#include "account/Account.h"

/* Whether the service accepts the user ID, the password and the product code. When it does not, when it
 * cannot be reached, or when the user ID or the password is empty, the user has been told so in a box owned
 * by `owner`, if there was memory for it. Blocks until the service has answered. */
bool SignIn(const Account& account, HWND owner) noexcept;
