#include "StubInternet.h"

#include "Platform.h"

#include <algorithm>
#include <cstring>

namespace {

std::string_view reply;
std::string_view unread;

// Handles are the address of this; nobody looks at it.
char anything = 0;

}  // namespace

void SetReply(std::string_view bytes) {
    reply = bytes;
}

HINTERNET WINAPI InternetOpenW(LPCWSTR /*agent*/, DWORD /*type*/, LPCWSTR /*proxy*/, LPCWSTR /*bypass*/,
                               DWORD /*flags*/) {
    return &anything;
}

HINTERNET WINAPI InternetConnectW(HINTERNET /*session*/, LPCWSTR /*host*/, INTERNET_PORT /*port*/,
                                  LPCWSTR /*user*/, LPCWSTR /*password*/, DWORD /*service*/, DWORD /*flags*/,
                                  DWORD_PTR /*context*/) {
    return &anything;
}

HINTERNET WINAPI HttpOpenRequestW(HINTERNET /*connection*/, LPCWSTR /*verb*/, LPCWSTR /*object*/,
                                  LPCWSTR /*version*/, LPCWSTR /*referrer*/, LPCWSTR* /*types*/,
                                  DWORD /*flags*/, DWORD_PTR /*context*/) {
    return &anything;
}

BOOL WINAPI HttpSendRequestW(HINTERNET /*request*/, LPCWSTR /*headers*/, DWORD /*headersLength*/,
                             LPVOID /*body*/, DWORD /*bodySize*/) {
    unread = reply;
    return TRUE;
}

/* The reply has no head. */
BOOL WINAPI HttpQueryInfoW(HINTERNET /*request*/, DWORD /*what*/, LPVOID /*buffer*/, LPDWORD /*size*/,
                           LPDWORD /*index*/) {
    return FALSE;
}

BOOL WINAPI InternetReadFile(HINTERNET /*request*/, LPVOID buffer, DWORD size, LPDWORD received) {
    const size_t some = std::min<size_t>(size, unread.size());
    memcpy(buffer, unread.data(), some);
    unread.remove_prefix(some);
    *received = static_cast<DWORD>(some);
    return TRUE;
}

BOOL WINAPI InternetCloseHandle(HINTERNET /*handle*/) {
    return TRUE;
}
