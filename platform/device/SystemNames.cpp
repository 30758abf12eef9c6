/* Functions of the desktop, of the C and C++ libraries and of the compiler, made of what Windows CE has. */
#include "ImageRuntime.h"
#include "Platform.h"

#include <chrono>

extern "C" {

void* __dso_handle = nullptr;

int __aeabi_atexit(void* object, void (*destroy)(void*), void* /*image*/) {
    return DestroyAtEnd(object, destroy);
}

void abort() {
    for (;;)
        TerminateProcess(GetCurrentProcess(), 3);
}

FARPROC WINAPI GetProcAddressA(HMODULE module, LPCSTR name);

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
    return GetProcAddressA(module, name);
}
}

/* Starts again from 0 after 49 days. */
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    return time_point(milliseconds(GetTickCount()));
}
