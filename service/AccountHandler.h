/* The account CGI program: signing in, and creating accounts. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "AccountStore.h"
#include "CgiReply.h"

constexpr size_t fewestPasswordCharacters = 6;
constexpr size_t mostAccountTextUnits = 1000;

/* The first int32 of every reply. */
enum class AccountStatus : int32_t {
    success = 0,         // after a sign-in the account state follows, an int32 0; else nothing follows
    noRequest = 1,       // the body is too short for a request code
    userIdTaken = 2,     // creation
    shortPassword = 3,   // creation: fewer than fewestPasswordCharacters letters and digits
    unknownUserId = 4,   // sign-in
    wrongPassword = 5,   // sign-in
    serviceFailure = 6,  // the database failed
    unknownCode = 7,     // no request has this code
    badLength = 8,  // a string's count is negative or too large, or the body does not end with its last value
    textTooLong = 9,  // creation: a user ID, name, referrer or language of more than mostAccountTextUnits
    badFlag = 10,     // creation: the byte for product news is neither 0 nor 1
    noUserId = 11,    // creation: empty, or nothing but blanks
    emailTaken = 13,  // creation
    badEmail = 14,    // creation
};

/* Answers one request body, whatever it holds. The refusal for the log holds nothing that the user typed,
 * because that may be a password in the wrong field. The caller wipes the body. Throws std::runtime_error
 * when there is no memory to hash a password. */
CgiReply HandleAccounts(AccountStore& accounts, std::string_view request);
