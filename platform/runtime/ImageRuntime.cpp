#include "ImageRuntime.h"

#include "Exceptions.h"

#include <cstddef>

using Constructor = void (*)();
// The linker script's.
extern "C" const Constructor firstConstructor[];
extern "C" const Constructor endOfConstructors[];

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

/* When there is no room for one more, its object is never destroyed: nobody looks at the result, and others
 * may still use the object. */
int DestroyAtEnd(void* object, void (*destroy)(void*)) noexcept {
    if (destructorCount == mostDestructors) {
        ranOut = true;
        return -1;
    }
    destructors[destructorCount++] = {object, destroy};
    return 0;
}

extern "C" {

/* The linker's --wrap directs every call of malloc in the image to this function. */
void* __real_malloc(size_t size);
void* __wrap_malloc(size_t size) {
    void* const memory = __real_malloc(size);
    if (memory == nullptr) ranOut = true;
    return memory;
}
}

bool BeginImage() noexcept {
    if (!TakeExceptionReserve()) return false;
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
    ReturnExceptionReserve();
}
