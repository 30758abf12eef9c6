/* What tests can tell and ask the stand-in Connection Manager, cellcore.dll. The handheld's has no such
 * functions. */
#pragma once

#include <windows.h>

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

#ifdef __cplusplus
}
#endif
