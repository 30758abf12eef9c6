/* The user's account with the service, as this program knows it. */
#pragma once

#include "text/WideString.h"

/* One per use of the library; it outlives the dialogs that show it. The password is plain text. */
struct Account {
    WideString userId;         /* as typed, or as it was saved */
    WideString password;       /* as typed, or what a saved one gives back */
    bool savePassword = false; /* the user's choice at the last "Sign in" */
    int32_t productCode = 0;   /* the application's number with the service; the application sets it */
    WideString productName; /* the application's name, also of its key below "SOFTWARE\"; it sets that, too */
};
