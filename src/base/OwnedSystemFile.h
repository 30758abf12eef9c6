/* Owner of an open file of the system. */
#pragma once

#include "base/Owned.h"

struct SystemFileKind {
    using Handle = HANDLE;
    // Not constexpr: INVALID_HANDLE_VALUE is a cast from a number to a pointer.
    static inline const Handle none = INVALID_HANDLE_VALUE;
    static void Close(Handle file) noexcept { CloseHandle(file); }
};
using SystemFile = Owned<SystemFileKind>;
