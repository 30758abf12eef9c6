/* Owner of one platform handle: closes it when it goes out of scope. */
#pragma once

#include "Platform.h"

#include <utility>

/* `Kind` describes a kind of handle:
 *   Handle          its type
 *   none            the value that means "no handle"
 *   Close(Handle)   gives a handle back
 * Closing leaves the thread's last error as it was, so that an early return still reports the failure. */
template <class Kind>
class Owned {
public:
    using Handle = typename Kind::Handle;

    Owned() noexcept = default;
    explicit Owned(Handle handle) noexcept : held(handle) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Reset(); }

    explicit operator bool() const noexcept { return held != Kind::none; }

    /* The handle, which stays owned. */
    [[nodiscard]] Handle Get() const noexcept { return held; }

    /* Closes the handle, if there is one, and takes `handle` instead. */
    void Reset(Handle handle = Kind::none) noexcept {
        const Handle old = std::exchange(held, handle);
        if (old == Kind::none) return;
        const DWORD error = GetLastError();
        Kind::Close(old);
        SetLastError(error);
    }

private:
    Handle held = Kind::none;
};
