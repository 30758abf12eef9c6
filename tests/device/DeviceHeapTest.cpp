#include "DeviceHeap.h"

#include <cstdint>
#include <cstring>

#include "simulator/SimulatorTest.h"

using DeviceHeap = SimulatorTest;

TEST_F(DeviceHeap, BlocksAreCountedUntilTheyAreGivenBack) {
    const size_t before = DeviceHeapBlocks();
    void* const one = DeviceMalloc(10);
    void* const other = DeviceCalloc(3, 4);
    EXPECT_EQ(before + 2, DeviceHeapBlocks());
    DeviceFree(one);
    DeviceFree(other);
    DeviceFree(nullptr);
    EXPECT_EQ(before, DeviceHeapBlocks());
}

TEST_F(DeviceHeap, ReallocKeepsTheBytesThatFit) {
    auto* block = static_cast<char*>(DeviceRealloc(nullptr, 3));
    std::memcpy(block, "abc", 3);
    block = static_cast<char*>(DeviceRealloc(block, 5000));
    EXPECT_EQ(0, std::memcmp(block, "abc", 3));
    block = static_cast<char*>(DeviceRealloc(block, 2));
    EXPECT_EQ(0, std::memcmp(block, "ab", 2));
    DeviceFree(block);
}

TEST_F(DeviceHeap, CallocClearsAndRefusesWhatDoesNotFitInMemory) {
    auto* const block = static_cast<char*>(DeviceCalloc(2, 3));
    EXPECT_EQ(0, std::memcmp(block, "\0\0\0\0\0\0", 6));
    DeviceFree(block);
    EXPECT_EQ(nullptr, DeviceCalloc(SIZE_MAX / 2, 3));
}

TEST_F(DeviceHeap, GivingBackTwiceIsAViolation) {
    void* const block = DeviceMalloc(1);
    DeviceFree(block);
    DeviceFree(block);
    EXPECT_EQ(nullptr, DeviceRealloc(block, 2));
    EXPECT_EQ((Lines{"free of what is no block of the heap", "realloc of what is no block of the heap"}),
              TakeViolations());
}

TEST_F(DeviceHeap, AllocationsFailWhereATestWantsIt) {
    AllocationWatch watch(2);
    void* const one = DeviceMalloc(1);
    void* const none = DeviceMalloc(1);
    void* const other = DeviceRealloc(one, 2);
    watch.Stop();
    EXPECT_NE(nullptr, one);
    EXPECT_EQ(nullptr, none);
    EXPECT_EQ(3u, watch.Count());
    DeviceFree(other);
}
