#pragma once

#include <cstddef>

#include "machine/Failing.h"

/* Counts what the library allocates with operator new on this thread while it exists, and can make an
 * allocation fail with std::bad_alloc (or null, for the nothrow forms). What the simulator and its handlers
 * allocate does not count; what the test itself does counts, so the scope should hold nothing but the call:
 *
 *   {
 *       AllocationWatch watch(3);
 *       handle = LMMapShopSearch(items, 1);
 *   }
 *
 * The program must link simulator_allocations; that it does not is a violation. One at a time. */
class AllocationWatch {
public:
    AllocationWatch();

    /* Makes the n-th allocation (1: the first) fail, and with FromThereOn all after it. */
    explicit AllocationWatch(size_t n, Failing failing = Failing::Once);

    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;
    ~AllocationWatch();

    /* The allocations so far, failed ones included. */
    size_t Count() const;

    /* Whether one of them was made to fail. */
    bool Failed() const;

    /* How many of the blocks that were allocated with operator new under the last watch have not been given
     * back, now or since its end; those of over-aligned types are left out. */
    static size_t BlocksLeft();

    /* Ends the watch early; Count and Failed keep their values. */
    void Stop();

private:
    void Start();

    bool running_ = false;
    size_t count_ = 0;
    bool failed_ = false;
};
