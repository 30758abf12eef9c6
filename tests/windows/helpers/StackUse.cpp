#include "helpers/StackUse.h"

#include "Platform.h"

#include <stdexcept>

namespace {

constexpr size_t paintedBytes = 256 * 1024;
constexpr unsigned char paint = 0xA5;
constexpr SIZE_T stackBytes = 1024 * 1024;

struct Measurement {
    const std::function<void()>& call;
    size_t used = 0;
};

/* Both functions have their array at the same place, below the frame of the caller that they share. */
__attribute__((noinline)) void Paint() {
    volatile unsigned char area[paintedBytes];
    for (volatile unsigned char& byte : area)
        byte = paint;
}

__attribute__((noinline)) size_t UsedBytes() {
    volatile unsigned char area[paintedBytes];
    // What is there was not written here, which the compiler must not know.
    asm volatile("" : "=m"(area));
    size_t untouched = 0;
    while (untouched < paintedBytes && area[untouched] == paint)
        ++untouched;
    return paintedBytes - untouched;
}

DWORD WINAPI Measure(void* argument) {
    auto& measurement = *static_cast<Measurement*>(argument);
    Paint();
    measurement.call();
    measurement.used = UsedBytes();
    return 0;
}

}  // namespace

size_t StackUseOf(const std::function<void()>& call) {
    Measurement measurement{call};
    const HANDLE thread =
        CreateThread(nullptr, stackBytes, Measure, &measurement, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) throw std::runtime_error("no thread");
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return measurement.used;
}
