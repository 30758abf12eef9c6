/* The heap of the device's runtime: what an image gets from malloc. AllocationWatch counts its allocations
 * and makes them fail, LimitedHeap gives it an end. Giving back what is not a block of this heap is a
 * violation. */
#pragma once

#include <cstddef>

void* DeviceMalloc(size_t size);
void* DeviceCalloc(size_t count, size_t size);
void* DeviceRealloc(void* block, size_t size);
void DeviceFree(void* block);

/* The number of blocks that have not been given back. */
size_t DeviceHeapBlocks();

/* Gives all of them back, as the end of a process does. */
void DropHeap();

/* Reports it as a violation when there are more blocks than `earlierBlocks`. */
void CheckHeap(size_t earlierBlocks);
