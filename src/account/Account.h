/* The user's account with the service, as this program knows it. */
#pragma once

#include "text/WideString.h"

/* Belongs to the application, and must outlive the dialogs that are given it. The password is plain text. */
struct Account {
    WideString userId;         /* as typed, or as it was saved */
    WideString password;       /* as typed, or what its saved form gives back */
    bool savePassword = false; /* the user's choice at the last "Sign in" */
    int32_t productCode = 0;   /* the application's number with the service, set by the application */
    WideString productName;    /* the application's name, and that of its key below "SOFTWARE\"; set by it */
    int32_t fieldLimit = 0;    /* code units of user ID and password that the dialogs take; 0: any number */
    DWORD savingError = 0;     /* the system's code if signing in could not save the account, else 0 */
};
