#include "helpers/OpenHandles.h"

#include "Platform.h"
// Builds on windows.h.
#include <winsock2.h>

#include <stdexcept>

#include "helpers/LocalTcp.h"

namespace {

bool IsOpen(uintptr_t number) {
    DWORD flags = 0;
    return GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != FALSE;
}

bool IsSocket(uintptr_t number) {
    sockaddr_storage address{};
    int size = sizeof address;
    return getsockname(number, reinterpret_cast<sockaddr*>(&address), &size) == 0;
}

}  // namespace

/* Handles are multiples of 4, and the least that is free is given out. To ask for all at once is no help:
 * Wine 8.0 says 0 (GetProcessHandleCount), and its server crashes when it lists those of the system
 * (NtQuerySystemInformation) while a process has none, as at its beginning. */
size_t OpenHandles() {
    constexpr size_t longestGap = 1024;
    const SocketLibrary library;
    size_t count = 0;
    size_t gap = 0;
    for (uintptr_t number = 4; gap < longestGap; number += 4) {
        if (!IsOpen(number)) {
            ++gap;
            continue;
        }
        gap = 0;
        if (!IsSocket(number)) ++count;
    }
    return count;
}

uintptr_t NextInternetHandle() {
    const HINTERNET session = InternetOpenW(L"count", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    if (session == nullptr) throw std::runtime_error("WinINet gives out no handle");
    InternetCloseHandle(session);
    return reinterpret_cast<uintptr_t>(session);
}
