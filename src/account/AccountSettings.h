/* The file that keeps an account for the next time: "settings.ini" in the folder "Orvande" of the user's
 * application data. Where the system has no folder for application data nothing is kept. */
#pragma once

#include "account/Account.h"

/* Fills in the saved user ID, which is empty if there is none, and the saved password, if there is one: its
 * letters, in lower case, and digits, at most 16 of them. Of a user ID's units above U+00FF only the low byte
 * has been kept. `savePassword` stays as it is. Makes the folder when it is missing. When memory runs out the
 * account holds what had been read by then. False: the file could not be opened, or memory ran out; the last
 * error tells why. */
bool LoadAccountSettings(Account& account) noexcept;

/* Replaces the file by one that holds the user ID, and the password if `savePassword` is set. False: it could
 * not be written, and the old file may be lost; the last error tells why. */
bool SaveAccountSettings(const Account& account) noexcept;
