/* The thread's last error: read directly after a call that failed, and left once, at the end of an export. In
 * between, the cause of a failure travels as a value; the values are those of LMOnline.h, 0 for none. */
#pragma once

#include "Platform.h"

/* What the call that has just failed gives as its cause; ERROR_GEN_FAILURE when it gives none. Never 0. */
DWORD ErrorOfFailedCall() noexcept;

/* The cause of what failed first; 0 as long as nothing has. */
class FirstFailure {
public:
    /* Keeps `newCause`, unless there is an earlier one. Always false, for functions that are so when they
     * fail. */
    bool Note(DWORD newCause) noexcept;

    /* Keeps the cause of the call that has just failed, likewise. */
    bool NoteFailedCall() noexcept;

    DWORD cause = ERROR_SUCCESS;
};

/* Gives `result` back, and leaves `cause` as the last error: nothing that could change it may follow. */
template <class Result>
Result LeaveError(DWORD cause, Result result) noexcept {
    SetLastError(cause);
    return result;
}
