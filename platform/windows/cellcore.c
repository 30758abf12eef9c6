/* Stands in for the handheld's Connection Manager where there is none: desktop Windows and Wine. The machine
 * is taken to be connected; a test can have it answer otherwise and see what it was called with. */
#include "StandInControl.h"

/* Identifies "the internet"; any value serves, since nothing but this file reads it. */
static const GUID internet = {0x436ef144, 0xb4fb, 0x4863, {0xa0, 0x41, 0x8f, 0x90, 0x5a, 0x62, 0xc5, 0x72}};

static HRESULT mappingAnswer = S_OK;
static HRESULT establishingAnswer = S_OK;
static DWORD statusAnswer = CONNMGR_STATUS_CONNECTED;
static StandInCallRecord calls;

HRESULT WINAPI ConnMgrMapURL(LPCWSTR url, GUID* network, DWORD* index) {
    ++calls.mapped;
    lstrcpynW(calls.url, url, ARRAYSIZE(calls.url));
    if (FAILED(mappingAnswer)) return mappingAnswer;
    *network = internet;
    if (index) ++*index;
    return mappingAnswer;
}

/* Each connection has its own handle, so that a test can tell them apart. */
HRESULT WINAPI ConnMgrEstablishConnectionSync(CONNMGR_CONNECTIONINFO* info, HANDLE* connection, DWORD timeout,
                                              DWORD* status) {
    ++calls.established;
    calls.connection = *info;
    calls.timeout = timeout;
    if (FAILED(establishingAnswer)) return establishingAnswer;
    *connection = (HANDLE)(ULONG_PTR)(0x5000 + 4 * calls.established);
    *status = statusAnswer;
    return establishingAnswer;
}

HRESULT WINAPI ConnMgrReleaseConnection(HANDLE connection, LONG cache) {
    ++calls.released;
    calls.releasedHandle = connection;
    calls.releasedCache = cache;
    return S_OK;
}

void WINAPI StandInAnswer(HRESULT mapping, HRESULT establishing, DWORD status) {
    mappingAnswer = mapping;
    establishingAnswer = establishing;
    statusAnswer = status;
    ZeroMemory(&calls, sizeof calls);
}

void WINAPI StandInCalls(StandInCallRecord* record) {
    *record = calls;
}
