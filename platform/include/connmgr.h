/* The part of the handheld's Connection Manager (cellcore) that is used here. */
#pragma once

#include <windows.h>

#define CONNMGR_PARAM_GUIDDESTNET 0x1
#define CONNMGR_PRIORITY_USERINTERACTIVE 0x08000
#define CONNMGR_STATUS_CONNECTED 0x10

/* 64 bytes on the device. */
typedef struct CONNMGR_CONNECTIONINFO {
    DWORD cbSize;
    DWORD dwParams; /* which of the fields below hold something: CONNMGR_PARAM_... */
    DWORD dwFlags;
    DWORD dwPriority;
    BOOL bExclusive;
    BOOL bDisabled;
    GUID guidDestNet; /* the destination network, from ConnMgrMapURL */
    HWND hWnd;
    UINT uMsg;
    LPARAM lParam;
    ULONG ulMaxCost;
    ULONG ulMinRcvBw;
    ULONG ulMaxConnLatency;
} CONNMGR_CONNECTIONINFO;

#ifdef __cplusplus
extern "C" {
#endif

/* Finds the network over which `url` is reached. `index` (may be null) is where the search for networks
 * begins, 0 at first, and then where it can go on. */
HRESULT WINAPI ConnMgrMapURL(LPCWSTR url, GUID* network, DWORD* index);

/* Asks for a connection and waits for it `timeout` ms at most. `status` receives CONNMGR_STATUS_...; the
 * handle is to be released whatever the status is. */
HRESULT WINAPI ConnMgrEstablishConnectionSync(CONNMGR_CONNECTIONINFO* info, HANDLE* connection, DWORD timeout,
                                              DWORD* status);

/* Gives a connection up. `cache` is for how many seconds it may be kept up for others; 0: not at all. */
HRESULT WINAPI ConnMgrReleaseConnection(HANDLE connection, LONG cache);

#ifdef __cplusplus
}

static_assert(sizeof(void*) != 4 || sizeof(CONNMGR_CONNECTIONINFO) == 64, "what cellcore checks");
#endif
