/* The file that keeps an account for the next time: "settings.ini" in the folder "Orvande" of the user's
 * application data. Where the system has no folder for application data nothing is kept. */
#pragma once

#include "account/Account.h"

/* Takes over the saved user ID, an empty one if there is none, and the saved password, if there is one: in
 * lower case, without anything but letters and digits, and 16 units at most. Of a user ID's units above
 * U+00FF only the low byte has been kept. `savePassword` stays as it is. Makes the folder when it is missing.
 * Without memory the account holds what could be read. */
void LoadAccountSettings(Account& account) noexcept;

/* Replaces the file by one that holds the user ID, and the password if `savePassword` is set. That the file
 * cannot be written is not reported; the old one may be lost then. */
void SaveAccountSettings(const Account& account) noexcept;
