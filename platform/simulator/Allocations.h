#pragma once

namespace simulator {

/* Whether the allocation that operator new is about to make must fail. Counts it when a watch is on. */
bool AllocationIsRefused() noexcept;

/* While one exists on this thread, allocations do not count: it is the simulator that works, not the library.
 */
class OwnWork {
public:
    OwnWork() noexcept;
    OwnWork(const OwnWork&) = delete;
    OwnWork& operator=(const OwnWork&) = delete;
    ~OwnWork();
};

}  // namespace simulator
