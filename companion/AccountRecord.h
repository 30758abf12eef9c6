/* The application's record of an account, and the library's own. */
#pragma once

#include "LMAccount.h"
#include "account/Account.h"

/* An account whose password is wiped at its end, so that no block of freed memory holds it. */
struct SecretAccount : Account {
    SecretAccount() = default;
    SecretAccount(const SecretAccount&) = delete;
    SecretAccount& operator=(const SecretAccount&) = delete;
    ~SecretAccount();
};

/* Whether it is a record as LMAccount.h asks for it. */
bool IsAccountRecord(const LMAccountRecord* record);

/* Fills an account with what a valid record holds. Throws std::bad_alloc. */
void ReadAccountRecord(const LMAccountRecord& record, Account& account);

/* Whether a valid record has the account's user ID, password and `savePassword`. */
bool IsInRecord(const Account& account, const LMAccountRecord& record);

/* Puts user ID, password and `savePassword` into the record. False: one of the texts does not fit, and
 * nothing is written. */
bool WriteAccountRecord(const Account& account, LMAccountRecord& record);
