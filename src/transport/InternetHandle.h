/* Owner of an internet session, connection or request. */
#pragma once

#include "base/Owned.h"

struct InternetKind {
    using Handle = HINTERNET;
    static constexpr Handle none = nullptr;
    static void Close(Handle handle) noexcept { InternetCloseHandle(handle); }
};
using InternetHandle = Owned<InternetKind>;

/* The session of all downloads; it lasts from the library's load to its unload. */
extern InternetHandle sharedSession;
