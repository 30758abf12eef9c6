/* The global operator new of test programs: malloc, with the say of AllocationWatch and LimitedHeap before
 * it. In front of every block that is not over-aligned stands which watch has counted it. */
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "machine/Allocations.h"
#include "machine/LimitedHeap.h"

namespace {

struct alignas(std::max_align_t) Header {
    size_t watch;
};

void* Allocate(size_t size) noexcept {
    if (simulator::AllocationIsRefused(size) || size > SIZE_MAX - sizeof(Header) - 1) return nullptr;
    auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + (size != 0 ? size : 1)));
    if (header == nullptr) return nullptr;
    header->watch = simulator::NoteBlock();
    LimitedHeap::NoteAllocated(header + 1, size);
    return header + 1;
}

void Free(void* memory) noexcept {
    if (memory == nullptr) return;
    LimitedHeap::NoteFreed(memory);
    Header* const header = static_cast<Header*>(memory) - 1;
    simulator::ForgetBlock(header->watch);
    std::free(header);
}

void* Allocate(size_t size, std::align_val_t alignment) noexcept {
    if (simulator::AllocationIsRefused(size)) return nullptr;
    const auto step = static_cast<size_t>(alignment);
    if (size > SIZE_MAX - step) return nullptr;
    void* const block = std::aligned_alloc(step, (size + step - 1) / step * step);
    if (block != nullptr) LimitedHeap::NoteAllocated(block, size);
    return block;
}

void FreeAligned(void* memory) noexcept {
    LimitedHeap::NoteFreed(memory);
    std::free(memory);
}

void* OrThrow(void* memory) {
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

void* operator new(size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new[](size_t size) {
    return OrThrow(Allocate(size));
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}

void* operator new(size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void* operator new[](size_t size, std::align_val_t alignment) {
    return OrThrow(Allocate(size, alignment));
}
void* operator new(size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, alignment);
}
void* operator new[](size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Allocate(size, alignment);
}

void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    FreeAligned(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    FreeAligned(memory);
}
void operator delete(void* memory, size_t, std::align_val_t) noexcept {
    FreeAligned(memory);
}
void operator delete[](void* memory, size_t, std::align_val_t) noexcept {
    FreeAligned(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    FreeAligned(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    FreeAligned(memory);
}
