#include "base/LastError.h"

DWORD ErrorOfFailedCall() noexcept {
    const DWORD error = GetLastError();
    return error != ERROR_SUCCESS ? error : ERROR_GEN_FAILURE;
}

bool FirstFailure::Note(DWORD newCause) noexcept {
    if (cause == ERROR_SUCCESS) cause = newCause;
    return false;
}

bool FirstFailure::NoteFailedCall() noexcept {
    return Note(ErrorOfFailedCall());
}
