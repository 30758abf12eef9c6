/* A program for a test to open: says that it has started, waits until it may end, and says so. */
#include <windows.h>

#include "OpenedProgram.h"

int main(void) {
    const HANDLE started = OpenEventW(EVENT_MODIFY_STATE, FALSE, OPENED_STARTED);
    const HANDLE mayEnd = OpenEventW(SYNCHRONIZE, FALSE, OPENED_MAY_END);
    const HANDLE ending = OpenEventW(EVENT_MODIFY_STATE, FALSE, OPENED_ENDING);
    SetEvent(started);
    WaitForSingleObject(mayEnd, 30000);
    SetEvent(ending);
    return 0;
}
