#pragma once

#include <cstddef>
#include <unordered_map>

/* While it exists, the heap has room for a number of bytes: an allocation of the library on this thread that
 * finds less fails, with std::bad_alloc or null. What an AllocationWatch counts takes its size here and
 * `bookkeeping` bytes more, and gives them back when it is freed; blocks from before are not known. The two
 * may be used together. What the rest of the process has on the heap is said with Take.
 *
 * The program must link simulator_allocations; that it does not is a violation. One at a time. */
class LimitedHeap {
public:
    /* What a heap keeps beside each block. */
    static constexpr size_t bookkeeping = 8;

    explicit LimitedHeap(size_t room);
    LimitedHeap(const LimitedHeap&) = delete;
    LimitedHeap& operator=(const LimitedHeap&) = delete;
    ~LimitedHeap();

    /* Takes a block of that size, for somebody else in the process: false when there is too little room. */
    bool Take(size_t size);

    /* Gives a block back that was taken so. */
    void GiveBack(size_t size);

    /* The bytes that are taken now, the most that were at any time, and those that are left. */
    [[nodiscard]] size_t Used() const { return used_; }
    [[nodiscard]] size_t Peak() const { return peak_; }
    [[nodiscard]] size_t Free() const { return room_ - used_; }

    /* How many blocks found too little room. */
    [[nodiscard]] size_t Refusals() const { return refusals_; }

    /* For operator new and delete: of a block that is about to be made, whether it must not; one that has
     * been made; one that is about to be freed. */
    static bool Refuses(size_t size) noexcept;
    static void NoteAllocated(const void* block, size_t size) noexcept;
    static void NoteFreed(const void* block) noexcept;

private:
    bool HasRoom(size_t size) noexcept;
    void Add(size_t taken) noexcept;

    size_t room_;
    size_t used_ = 0;
    size_t peak_ = 0;
    size_t refusals_ = 0;
    std::unordered_map<const void*, size_t> blocks_;  // what each takes
};
