#include "DeviceHeap.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_map>

#include "machine/Allocations.h"
#include "machine/LimitedHeap.h"
#include "machine/Violations.h"

namespace {

/* The blocks and their sizes. */
std::unordered_map<void*, size_t>& Blocks() {
    const simulator::OwnWork ownWork;
    static auto& blocks = *new std::unordered_map<void*, size_t>;
    return blocks;
}

// Fill memory that a program has not written yet, and memory that it has given back.
constexpr int freshByte = 0xCD;
constexpr int freedByte = 0xDD;

void* MakeBlock(size_t size) {
    const simulator::OwnWork ownWork;
    void* const block = std::malloc(std::max(size, size_t{1}));
    if (block == nullptr) return nullptr;
    std::memset(block, freshByte, size);
    Blocks().emplace(block, size);
    return block;
}

}  // namespace

void* DeviceMalloc(size_t size) {
    if (simulator::AllocationIsRefused(size)) return nullptr;
    void* const block = MakeBlock(size);
    if (block != nullptr) LimitedHeap::NoteAllocated(block, size);
    return block;
}

void* DeviceCalloc(size_t count, size_t size) {
    if (size != 0 && count > SIZE_MAX / size) return nullptr;
    void* const block = DeviceMalloc(count * size);
    if (block != nullptr) std::memset(block, 0, count * size);
    return block;
}

void* DeviceRealloc(void* block, size_t size) {
    if (block == nullptr) return DeviceMalloc(size);
    const auto found = Blocks().find(block);
    if (found == Blocks().end()) {
        simulator::Violate("realloc of what is no block of the heap");
        return nullptr;
    }
    void* const moved = DeviceMalloc(size);
    if (moved == nullptr) return nullptr;
    std::memcpy(moved, block, std::min(size, found->second));
    DeviceFree(block);
    return moved;
}

void DeviceFree(void* block) {
    const simulator::OwnWork ownWork;
    if (block == nullptr) return;
    const auto found = Blocks().find(block);
    if (found == Blocks().end()) {
        simulator::Violate("free of what is no block of the heap");
        return;
    }
    LimitedHeap::NoteFreed(block);
    std::memset(block, freedByte, found->second);
    Blocks().erase(found);
    std::free(block);
}

size_t DeviceHeapBlocks() {
    return Blocks().size();
}

void DropHeap() {
    const simulator::OwnWork ownWork;
    while (!Blocks().empty())
        DeviceFree(Blocks().begin()->first);
}

void CheckHeap(size_t earlierBlocks) {
    const size_t blocks = DeviceHeapBlocks();
    if (blocks <= earlierBlocks) return;
    simulator::Violate(std::to_string(blocks - earlierBlocks) + " blocks were left on the heap");
}
