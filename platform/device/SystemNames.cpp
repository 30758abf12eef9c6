/* Functions of the desktop, or of the C++ library, made of those that Windows CE has. */
#include "Platform.h"

#include <chrono>

extern "C" FARPROC WINAPI GetProcAddressA(HMODULE module, LPCSTR name);

extern "C" FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
    return GetProcAddressA(module, name);
}

/* Starts again from 0 after 49 days. */
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    return time_point(milliseconds(GetTickCount()));
}
