/* Signs the user in to his online account: with what was saved, or else with the library's dialog.
 *
 *     account                  with what was saved; the dialog when that is not enough
 *     account USER PASSWORD    without a dialog; says why when it fails
 *
 * Exit code: 0 signed in, 1 not, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file:
 *     i686-w64-mingw32-gcc -municode -I ../../include -o account.exe account.c libOrvandeAccount.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include account.c
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeAccount.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <string.h>
#include <wchar.h>

#include "LMAccount.h"

/* Puts text into a field of the record; 0: it does not fit. */
static int PutText(LMChar* field, const WCHAR* text) {
    const size_t units = wcslen(text) + 1;
    if (units > LM_ACCOUNT_TEXT) return 0;
    memcpy(field, text, units * sizeof *field);
    return 1;
}

/* What this program says of itself. */
static void SetUp(LMAccountRecord* account) {
    memset(account, 0, sizeof *account);
    account->size = sizeof *account;
    account->productCode = 1; /* its number with the service */
    PutText(account->productName, L"Orvande Account Sample");
}

/* Prints text of any script, as UTF-8. */
static void PrintText(const WCHAR* text) {
    char bytes[3 * LM_ACCOUNT_TEXT];
    if (WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, NULL, NULL) > 0) printf("%s", bytes);
}

static void Explain(DWORD error) {
    if (error == LM_ERROR_UNKNOWN_USER)
        printf("there is no such user\n");
    else if (error == LM_ERROR_WRONG_PASSWORD)
        printf("the password is wrong\n");
    else if (error == LM_ERROR_CANCELLED)
        printf("nobody is signed in\n");
    else if (LM_ERROR_KIND(error) == LM_ERROR_ACCOUNT_STATE)
        printf("the account cannot be used: state %lu\n", (unsigned long)LM_ERROR_STATUS(error));
    else
        printf("failed: error 0x%08lX\n", (unsigned long)error);
}

int wmain(int count, wchar_t** values) {
    LMAccountRecord account;
    LMInt32 isSignedIn;
    DWORD error;

#ifndef UNDER_CE
    SetConsoleOutputCP(CP_UTF8);
#endif
    SetUp(&account);
    if (count == 3 && PutText(account.userId, values[1]) && PutText(account.password, values[2])) {
        isSignedIn = LMAccountSignIn(&account);
    } else if (count == 1) {
        isSignedIn = LMAccountLoad(&account) && LMAccountSignIn(&account);
        if (!isSignedIn) isSignedIn = LMAccountShowSignIn(&account, NULL);
    } else {
        printf("usage: account [USER PASSWORD]\n");
        return 2;
    }
    error = GetLastError(); /* at once: any other call may change it */

    memset(account.password, 0, sizeof account.password);
    if (!isSignedIn) {
        Explain(error);
        return 1;
    }
    printf("signed in as ");
    PrintText(account.userId);
    printf("\n");
    return 0;
}
