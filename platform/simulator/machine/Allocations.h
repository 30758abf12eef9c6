#pragma once

#include <cstddef>

namespace simulator {

/* Whether the allocation of that size that operator new is about to make must fail. Counts it when a watch is
 * on. */
bool AllocationIsRefused(size_t size) noexcept;

/* Whether it is the simulator that works on this thread now. */
bool IsOwnWork() noexcept;

/* Notes a block that was allocated. The number of the watch that counts it, to be kept with it; 0: none. */
size_t NoteBlock() noexcept;

/* Notes that a block with that number is given back. */
void ForgetBlock(size_t watch) noexcept;

/* Whether a watch is on that has made an allocation fail. */
bool HasMemoryFailed() noexcept;

/* While one exists on this thread, allocations do not count: it is the simulator that works, not the library.
 */
class OwnWork {
public:
    OwnWork() noexcept;
    OwnWork(const OwnWork&) = delete;
    OwnWork& operator=(const OwnWork&) = delete;
    ~OwnWork();
};

/* While one exists on this thread, allocations count again although the simulator is at work: it has called
 * back into the library. */
class LibraryWork {
public:
    LibraryWork() noexcept;
    LibraryWork(const LibraryWork&) = delete;
    LibraryWork& operator=(const LibraryWork&) = delete;
    ~LibraryWork();

private:
    int suspended_;
};

}  // namespace simulator
