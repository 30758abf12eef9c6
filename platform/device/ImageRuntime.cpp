#include "ImageRuntime.h"

#include "Platform.h"

#include <cstddef>

using Constructor = void (*)();
extern "C" const Constructor firstConstructor[];   // NOLINT: the linker script's
extern "C" const Constructor endOfConstructors[];  // NOLINT

// The compiler's runtime declares these nowhere.
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

/* Memory, or room for destructors, was not there when it was wanted. */
bool ranOut;

}  // namespace

extern "C" {

void* __dso_handle = nullptr;

[[noreturn]] void abort() {
    for (;;)
        TerminateProcess(GetCurrentProcess(), 3);
}

/* Called for every constructed object that wants to be destroyed. One for which there is no room is not
 * destroyed: nobody looks at the result, and others may still use the object. */
int __aeabi_atexit(void* object, void (*destroy)(void*), void* /*image*/) {
    if (destructorCount == mostDestructors) {
        ranOut = true;
        return -1;
    }
    destructors[destructorCount++] = {object, destroy};
    return 0;
}

/* Everything in the image that allocates comes through here (the linker's --wrap). */
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
