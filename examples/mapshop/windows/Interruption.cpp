#include "Interruption.h"

#include <windows.h>

#include <atomic>

namespace {

// The system calls the handler on a thread of its own.
std::atomic<bool> wanted;

BOOL WINAPI HandleInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    const bool isFirst = !wanted.exchange(true);
    return isFirst;
}

}  // namespace

Interruption::Interruption() {
    wanted = false;
    SetConsoleCtrlHandler(HandleInterrupt, TRUE);
}

Interruption::~Interruption() {
    SetConsoleCtrlHandler(HandleInterrupt, FALSE);
}

bool Interruption::Wanted() const {
    return wanted;
}
