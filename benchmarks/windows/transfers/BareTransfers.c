#include "BareTransfers.h"

#include "TransferRequests.h"

#include <wininet.h>

static DWORD ReadSearchReply(HINTERNET request, BYTE* kept, DWORD capacity) {
    BYTE buffer[256];
    DWORD count = 0;
    for (;;) {
        DWORD received = 0;
        BYTE* const to = kept != NULL ? kept + count : buffer;
        if (kept != NULL && capacity - count < sizeof buffer) return 0;
        if (!InternetReadFile(request, to, sizeof buffer, &received) || received == 0) return count;
        count += received;
    }
}

DWORD BareSearch(BYTE* kept, DWORD capacity) {
    /* The code of a search and the number of its items. */
    BYTE body[8] = {101, 0, 0, 0, 0, 0, 0, 0};
    const DWORD flags = INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE;
    const HINTERNET session = InternetOpenW(L"ZR_CgiClient-SP", INTERNET_OPEN_TYPE_PRECONFIG, NULL, NULL, 0);
    const HINTERNET connection = InternetConnectW(session, transferHost, INTERNET_DEFAULT_HTTP_PORT, NULL,
                                                  NULL, INTERNET_SERVICE_HTTP, 0, 0);
    const HINTERNET request =
        HttpOpenRequestW(connection, L"POST", L"cgi-bin/mapstore.cgi", NULL, NULL, NULL, flags, 0);
    DWORD count = 0;
    if (HttpSendRequestW(request, NULL, 0, body, sizeof body))
        count = ReadSearchReply(request, kept, capacity);
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
    return count;
}

static DWORD ReceiveFile(HINTERNET request, HANDLE file) {
    BYTE chunk[4096];
    DWORD count = 0;
    for (;;) {
        DWORD received = 0;
        DWORD written = 0;
        if (!InternetReadFile(request, chunk, sizeof chunk, &received)) return 0;
        if (received == 0) return count;
        if (!WriteFile(file, chunk, received, &written, NULL) || written < received) return 0;
        count += received;
    }
}

DWORD BareDownload(const WCHAR* path) {
    const DWORD flags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT |
                        INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_RESYNCHRONIZE | INTERNET_FLAG_PRAGMA_NOCACHE;
    const HINTERNET session = InternetOpenW(L"Orvande-SP", INTERNET_OPEN_TYPE_PRECONFIG, NULL, NULL, 0);
    const HINTERNET connection = InternetConnectW(session, transferHost, INTERNET_DEFAULT_HTTP_PORT, NULL,
                                                  NULL, INTERNET_SERVICE_HTTP, 0, 0);
    const HINTERNET request = HttpOpenRequestW(connection, L"GET", transferPath, NULL, NULL, NULL, flags, 0);
    DWORD count = 0;
    if (HttpSendRequestW(request, NULL, 0, NULL, 0)) {
        const HANDLE file =
            CreateFileW(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL);
        if (file != INVALID_HANDLE_VALUE) {
            count = ReceiveFile(request, file);
            CloseHandle(file);
        }
    }
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
    return count;
}
