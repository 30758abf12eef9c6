#include "ImageRuntime.h"

#include "Platform.h"

#include <cstddef>

using Constructor = void (*)();
extern "C" const Constructor firstConstructor[];   // NOLINT: the linker script's
extern "C" const Constructor endOfConstructors[];  // NOLINT

// Part of the compiler's runtime, which declares it in no header.
namespace __gnu_cxx {
void __freeres();
}

namespace {

struct Destructor {
    void* object;
    void (*destroy)(void*);
};

constexpr size_t mostDestructors = 32;
Destructor destructors[mostDestructors];
size_t destructorCount;

/* Whether memory, or room for destructors, has run out. */
bool ranOut;

}  // namespace

extern "C" {

void* __dso_handle = nullptr;

[[noreturn]] void abort() {
    for (;;)
        TerminateProcess(GetCurrentProcess(), 3);
}

/* Called for every constructed object that has a destructor. When there is no room for one more, its object
 * is never destroyed: nobody looks at the result, and others may still use the object. */
int __aeabi_atexit(void* object, void (*destroy)(void*), void* /*image*/) {
    if (destructorCount == mostDestructors) {
        ranOut = true;
        return -1;
    }
    destructors[destructorCount++] = {object, destroy};
    return 0;
}

/* The linker's --wrap directs every call of malloc in the image to this function. */
void* __real_malloc(size_t size);
void* __wrap_malloc(size_t size) {
    void* const memory = __real_malloc(size);
    if (memory == nullptr) ranOut = true;
    return memory;
}
}

bool BeginImage() noexcept {
    try {
        for (const Constructor* constructor = firstConstructor; constructor != endOfConstructors;
             ++constructor) {
            (*constructor)();
            if (ranOut) return false;
        }
        return true;
    } catch (...) {
        return false;
    }
}

void EndImage() noexcept {
    while (destructorCount > 0) {
        const Destructor& last = destructors[--destructorCount];
        last.destroy(last.object);
    }
    __gnu_cxx::__freeres();
}
