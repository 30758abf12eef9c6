/* What tests can tell and ask the stand-ins for the Connection Manager, cellcore.dll, and the shell library,
 * aygshell.dll. The handheld's libraries have no such functions. */
#pragma once

#include <windows.h>
// It needs windows.h.
#include <commctrl.h>

#include "aygshell.h"
#include "connmgr.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The calls since the last StandInAnswer, and the arguments of the last of each kind. */
typedef struct StandInCallRecord {
    LONG mapped;                       /* calls of ConnMgrMapURL */
    LONG established;                  /* calls of ConnMgrEstablishConnectionSync */
    LONG released;                     /* calls of ConnMgrReleaseConnection */
    WCHAR url[260];                    /* what was to be mapped, cut to fit */
    CONNMGR_CONNECTIONINFO connection; /* what was asked for */
    DWORD timeout;                     /* ms */
    HANDLE releasedHandle;
    LONG releasedCache;
} StandInCallRecord;

/* Sets what the Connection Manager answers from here on, and begins a new record of calls. At the start both
 * functions succeed and the status is CONNMGR_STATUS_CONNECTED. */
void WINAPI StandInAnswer(HRESULT mapping, HRESULT establishing, DWORD status);

void WINAPI StandInCalls(StandInCallRecord* record);

/* The shell's calls since the last StandInMenuBars, and the arguments of the last of each kind. */
typedef struct StandInShellRecord {
    LONG initialized;      /* calls of SHInitExtraControls */
    LONG dialogs;          /* calls of SHInitDialog */
    LONG menuBars;         /* calls of SHCreateMenuBar */
    LONG backs;            /* calls of SHSendBackToFocusWindow */
    LONG overrides;        /* SHCMBM_OVERRIDEKEY to any menu bar */
    LONG buttons;          /* TB_SETBUTTONINFO to any menu bar */
    SHINITDLGINFO dialog;  /* what was to be prepared */
    SHMENUBARINFO menuBar; /* what was to be made */
    UINT backMessage;      /* the message that the Back key came as */
    WPARAM backWParam;
    LPARAM backLParam;
    WPARAM overriddenKey;
    LPARAM overrideFlags;
    int buttonCommand;    /* the button that was changed */
    TBBUTTONINFOW button; /* how it was changed; `pszText` may be invalid */
} StandInShellRecord;

/* Sets whether menu bars can be made from here on (at first they can), and begins a new record of calls. */
void WINAPI StandInMenuBars(BOOL succeed);

void WINAPI StandInShellCalls(StandInShellRecord* record);

#ifdef __cplusplus
}
#endif
