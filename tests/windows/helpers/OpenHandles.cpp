#include "helpers/OpenHandles.h"

#include "Platform.h"

namespace {

bool IsOpen(uintptr_t number) {
    DWORD flags = 0;
    return GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != FALSE;
}

}  // namespace

/* Handles are multiples of 4, and the least that is free is given out. To ask for all at once is no help:
 * Wine 8.0 says 0 (GetProcessHandleCount), and its server crashes when it lists those of the system
 * (NtQuerySystemInformation) while a process has none, as at its beginning. */
size_t OpenHandles() {
    constexpr size_t longestGap = 1024;
    size_t count = 0;
    size_t gap = 0;
    for (uintptr_t number = 4; gap < longestGap; number += 4) {
        if (IsOpen(number)) {
            ++count;
            gap = 0;
        } else {
            ++gap;
        }
    }
    return count;
}

size_t OpenHandlesOnceBelow(size_t limit) {
    constexpr ULONGLONG longestWait = 10'000;
    const ULONGLONG start = GetTickCount64();
    size_t count = OpenHandles();
    while (count >= limit && GetTickCount64() - start < longestWait) {
        Sleep(20);
        count = OpenHandles();
    }
    return count;
}
