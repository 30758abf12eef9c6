/* What the account's dialogs say. */
#pragma once

#include "Platform.h"

namespace account_texts {

inline constexpr WCHAR title[] = L"Orvande Online";
inline constexpr WCHAR signInCaption[] = L"Sign in to Your Account";
inline constexpr WCHAR creationCaption[] = L"Create Account";

inline constexpr WCHAR nothingToCheck[] =
    L"You must provide a user name and password to access your account.";
inline constexpr WCHAR unknownUser[] =
    L"The User ID is not correct. If you have lost your ID, click the \"I Forgot\" button. Do not create "
    L"more "
    L"than one account.";
inline constexpr WCHAR wrongPassword[] =
    L"The Password is not correct. If you have lost your password, click the \"I Forgot\" button.";
inline constexpr WCHAR problem[] = L"A problem occured communicating with the server";

inline constexpr WCHAR mismatch[] = L"The passwords do not match";
inline constexpr WCHAR notSent[] = L"Problem communicating over the internet";
inline constexpr WCHAR unreadable[] = L"Internal server error";
inline constexpr WCHAR nameTaken[] =
    L"This user name is already in use.\nIf this is your account and you have forgotten the User ID or "
    L"Password, "
    L"click \"Cancel\" and \"I Forgot\" to recover them.";
inline constexpr WCHAR shortPassword[] = L"The password must be at least 6 letters or numbers";
inline constexpr WCHAR emailTaken[] =
    L"An account already exists with the same email address. Please sign in to that account.\nIf you have "
    L"forgotten the User ID or Password, click \"Forgot\" to recover them.";
inline constexpr WCHAR badEmail[] = L"You must provide a valid email address.";

}  // namespace account_texts
