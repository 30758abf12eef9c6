#include "allocations/CountedHeap.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>

// What the C library's own functions are made of; a program may put its own in their place.
// NOLINTBEGIN(bugprone-reserved-identifier): its names
extern "C" {
void* __libc_malloc(size_t size) noexcept;
void* __libc_calloc(size_t count, size_t size) noexcept;
void* __libc_realloc(void* block, size_t size) noexcept;
void* __libc_memalign(size_t alignment, size_t size) noexcept;
void __libc_free(void* block) noexcept;
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

size_t calls = 0;
int64_t live = 0;
int64_t peak = 0;

int64_t SizeOf(void* block) {
    return static_cast<int64_t>(malloc_usable_size(block));
}

void* Taken(void* block) {
    ++calls;
    live += SizeOf(block);
    peak = std::max(peak, live);
    return block;
}

}  // namespace

void BeginHeapUse() {
    calls = 0;
    live = 0;
    peak = 0;
}

HeapUse CurrentHeapUse() {
    return {calls, static_cast<size_t>(peak)};
}

extern "C" void* malloc(size_t size) noexcept {
    return Taken(__libc_malloc(size));
}

extern "C" void* calloc(size_t count, size_t size) noexcept {
    return Taken(__libc_calloc(count, size));
}

extern "C" void* realloc(void* block, size_t size) noexcept {
    live -= SizeOf(block);
    return Taken(__libc_realloc(block, size));
}

extern "C" void* memalign(size_t alignment, size_t size) noexcept {
    return Taken(__libc_memalign(alignment, size));
}

extern "C" void* aligned_alloc(size_t alignment, size_t size) noexcept {
    return memalign(alignment, size);
}

extern "C" void free(void* block) noexcept {
    live -= SizeOf(block);
    __libc_free(block);
}
