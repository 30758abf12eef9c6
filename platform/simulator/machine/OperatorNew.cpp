/* The global operator new of test programs: malloc, with the say of AllocationWatch and LimitedHeap before
 * it. */
#include <cstdint>
#include <cstdlib>
#include <new>

#include "machine/Allocations.h"
#include "machine/LimitedHeap.h"

namespace {

void* Noted(void* block, size_t size) noexcept {
    if (block != nullptr) LimitedHeap::NoteAllocated(block, size);
    return block;
}

void* Allocate(size_t size) noexcept {
    if (simulator::AllocationIsRefused(size)) return nullptr;
    return Noted(std::malloc(size != 0 ? size : 1), size);
}

void* Allocate(size_t size, std::align_val_t alignment) noexcept {
    if (simulator::AllocationIsRefused(size)) return nullptr;
    const auto step = static_cast<size_t>(alignment);
    if (size > SIZE_MAX - step) return nullptr;
    return Noted(std::aligned_alloc(step, (size + step - 1) / step * step), size);
}

void Free(void* memory) noexcept {
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
    Free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, size_t, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, size_t, std::align_val_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    Free(memory);
}
