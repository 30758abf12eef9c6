/* The machine's clock. Its calls are neither listed nor made to fail. */
#include "Platform.h"

#include <chrono>

DWORD WINAPI GetTickCount() {
    using std::chrono::milliseconds;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(std::chrono::duration_cast<milliseconds>(now).count());
}
