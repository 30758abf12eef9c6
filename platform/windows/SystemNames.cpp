/* What the compiler expects of a runtime for Windows. */
#include "ImageRuntime.h"

extern "C" {

/* There may be several threads: the unwinder then takes care. */
int _CRT_MT = 1;

int atexit(void (*end)()) {
    return DestroyAtEnd(reinterpret_cast<void*>(end),
                        [](void* called) { reinterpret_cast<void (*)()>(called)(); });
}
}
