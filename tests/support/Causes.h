/* What an application reads after a call: the cause that the call has left. */
#pragma once

#include "Platform.h"

#include "LMOnline.h"

/* Stands in the last error before every call of a test: no call may take it over. */
inline constexpr DWORD staleError = 4711;

constexpr DWORD HttpRefusal(DWORD status) {
    return 0x21000000U + status;
}

constexpr DWORD ServiceAnswer(DWORD status) {
    return 0x22000000U + status;
}

/* The last error after `call`. */
template <class Call>
DWORD CauseOf(Call call) {
    SetLastError(staleError);
    call();
    return GetLastError();
}
