/* An application in C that is linked with the companion's import library.
 *
 *     plain-account FUNCTION [user=TEXT] [password=TEXT] [save=NUMBER] [STEP ...]
 *     plain-account refusals
 *
 * Calls the function, which is load, save, signin, show-signin or show-create, and prints its result, the
 * last error, and the record. A user in a thread of his own takes the steps meanwhile:
 *
 *     in=CAPTION     waits for the dialog or message box of that caption
 *     read           prints the text of the message box
 *     CONTROL=TEXT   puts the text into the control of that number
 *     press=CONTROL  presses the control
 *     command=NUMBER gives the command, and waits until the dialog or box is gone or can be used again
 *
 * With `refusals` it calls every function with every record that is to be refused, and prints what is
 * taken. */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>

#include <windows.h>

#include "LMAccount.h"

/* The layout, as the manual states it. */
typedef char AssertProductCode[offsetof(LMAccountRecord, productCode) == 4 ? 1 : -1];
typedef char AssertSavePassword[offsetof(LMAccountRecord, savePassword) == 8 ? 1 : -1];
typedef char AssertUserId[offsetof(LMAccountRecord, userId) == 12 ? 1 : -1];
typedef char AssertPassword[offsetof(LMAccountRecord, password) == 524 ? 1 : -1];
typedef char AssertProductName[offsetof(LMAccountRecord, productName) == 1036 ? 1 : -1];

static LMInt32 LM_CALL ShowSignIn(LMAccountRecord* record) {
    return LMAccountShowSignIn(record, NULL);
}

static LMInt32 LM_CALL ShowCreate(LMAccountRecord* record) {
    return LMAccountShowCreate(record, NULL);
}

static LMInt32 LM_CALL Save(LMAccountRecord* record) {
    return LMAccountSave(record);
}

static LMInt32 LM_CALL SignIn(LMAccountRecord* record) {
    return LMAccountSignIn(record);
}

static const struct {
    const wchar_t* name;
    LMAccountLoadFunction call;
} functions[] = {{L"load", LMAccountLoad},
                 {L"save", Save},
                 {L"signin", SignIn},
                 {L"show-signin", ShowSignIn},
                 {L"show-create", ShowCreate}};

enum { functionCount = sizeof functions / sizeof functions[0] };

/* ---- The user ---- */

struct User {
    DWORD thread; /* the application's */
    wchar_t** steps;
    HWND dialog; /* the one that he sees */
};

struct Search {
    const wchar_t* caption;
    HWND found;
};

static BOOL CALLBACK IsWanted(HWND window, LPARAM parameter) {
    struct Search* const search = (struct Search*)parameter;
    wchar_t caption[100];
    InternalGetWindowText(window, caption, 100);
    if (wcscmp(caption, search->caption) != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    search->found = window;
    return FALSE;
}

static HWND WaitForDialog(DWORD thread, const wchar_t* caption) {
    struct Search search;
    int looks;
    search.caption = caption;
    search.found = NULL;
    for (looks = 0; looks < 1000 && search.found == NULL; ++looks) {
        EnumThreadWindows(thread, IsWanted, (LPARAM)&search);
        if (search.found == NULL) Sleep(10);
    }
    if (search.found == NULL) {
        printf("%ls has not come\n", caption);
        fflush(stdout);
        ExitProcess(3);
    }
    SendMessageW(search.found, WM_NULL, 0, 0);
    return search.found;
}

static void Give(HWND dialog, int command) {
    PostMessageW(dialog, WM_COMMAND, (WPARAM)command, 0);
    /* A dialog is disabled while it shows a message or another dialog, and gone when it has ended. */
    while (IsWindow(dialog) && IsWindowEnabled(dialog) && command != 0) {
        DWORD_PTR ignored;
        if (SendMessageTimeoutW(dialog, WM_NULL, 0, 0, SMTO_NORMAL, 10000, &ignored)) break;
    }
}

static void ReadBox(HWND box) {
    wchar_t text[400];
    GetDlgItemTextW(box, 0xFFFF, text, 400);
    printf("%ls\n", text);
}

static void Take(struct User* user, wchar_t* step) {
    wchar_t* const value = wcschr(step, L'=');
    if (wcsncmp(step, L"in=", 3) == 0) {
        user->dialog = WaitForDialog(user->thread, step + 3);
    } else if (wcscmp(step, L"read") == 0) {
        ReadBox(user->dialog);
    } else if (wcsncmp(step, L"press=", 6) == 0) {
        SendMessageW(GetDlgItem(user->dialog, (int)wcstol(step + 6, NULL, 10)), BM_CLICK, 0, 0);
    } else if (wcsncmp(step, L"command=", 8) == 0) {
        Give(user->dialog, (int)wcstol(step + 8, NULL, 10));
    } else if (value != NULL) {
        SetDlgItemTextW(user->dialog, (int)wcstol(step, NULL, 10), value + 1);
    }
}

static DWORD WINAPI Act(LPVOID parameter) {
    struct User* const user = (struct User*)parameter;
    for (; *user->steps != NULL; ++user->steps)
        Take(user, *user->steps);
    return 0;
}

/* ---- The application ---- */

static void SetUp(LMAccountRecord* record) {
    memset(record, 0, sizeof *record);
    record->size = sizeof *record;
    record->productCode = 1;
    wcscpy(record->productName, L"Plain Account");
}

/* Takes the arguments for the record; what is left is the user's. */
static wchar_t** Prepare(LMAccountRecord* record, wchar_t** arguments) {
    SetUp(record);
    for (; *arguments != NULL; ++arguments) {
        if (wcsncmp(*arguments, L"user=", 5) == 0) {
            wcscpy(record->userId, *arguments + 5);
        } else if (wcsncmp(*arguments, L"password=", 9) == 0) {
            wcscpy(record->password, *arguments + 9);
        } else if (wcsncmp(*arguments, L"save=", 5) == 0) {
            record->savePassword = (LMInt32)wcstol(*arguments + 5, NULL, 10);
        } else {
            break;
        }
    }
    return arguments;
}

static int Run(LMAccountLoadFunction call, wchar_t** arguments) {
    LMAccountRecord record;
    struct User user;
    HANDLE thread;
    LMInt32 result;
    DWORD error;
    user.steps = Prepare(&record, arguments);
    user.thread = GetCurrentThreadId();
    user.dialog = NULL;
    thread = CreateThread(NULL, 0, Act, &user, 0, NULL);
    result = call(&record);
    error = GetLastError();
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    printf("%ld 0x%lx\n%ls|%ls|%ld\n", (long)result, error, record.userId, record.password,
           (long)record.savePassword);
    return 0;
}

static void ExpectRefusal(const char* name, const LMAccountRecord* bad) {
    int i;
    for (i = 0; i < functionCount; ++i) {
        LMAccountRecord record;
        LMInt32 result;
        DWORD error;
        if (bad != NULL) record = *bad;
        SetLastError(0);
        result = functions[i].call(bad != NULL ? &record : NULL);
        error = GetLastError();
        if (result != 0 || error != LM_ERROR_BAD_ARGUMENT)
            printf("%ls takes %s: %ld 0x%lx\n", functions[i].name, name, (long)result, error);
        if (bad != NULL && memcmp(&record, bad, sizeof record) != 0)
            printf("%ls changes %s\n", functions[i].name, name);
    }
}

static void ExpectRefusals(void) {
    static const LMInt32 sizes[] = {0, 4, 1547, 1549, -1};
    LMAccountRecord record;
    size_t i;
    ExpectRefusal("NULL", NULL);
    for (i = 0; i < sizeof sizes / sizeof sizes[0]; ++i) {
        SetUp(&record);
        record.size = sizes[i];
        ExpectRefusal("a wrong size", &record);
    }
    for (i = 0; i < 3; ++i) {
        LMChar* const field = (LMChar*)((char*)&record + 12 + 512 * i);
        SetUp(&record);
        wcscpy(record.userId, L"anna");
        wcscpy(record.password, L"secret1");
        wmemset(field, L'x', LM_ACCOUNT_TEXT);
        ExpectRefusal("a text without an end", &record);
    }
    SetUp(&record);
    if (LMAccountSignIn(&record) != 0 || GetLastError() != LM_ERROR_BAD_ARGUMENT)
        printf("signin takes empty texts\n");
}

int wmain(int count, wchar_t** arguments);
int wmain(int count, wchar_t** arguments) {
    int i;
    if (count > 1 && wcscmp(arguments[1], L"refusals") == 0) {
        ExpectRefusals();
        puts("done");
        return 0;
    }
    for (i = 0; count > 1 && i < functionCount; ++i) {
        if (wcscmp(arguments[1], functions[i].name) == 0) return Run(functions[i].call, arguments + 2);
    }
    return 2;
}
