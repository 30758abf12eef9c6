#include "SimulatorTest.h"

#include <new>

#include "machine/LimitedHeap.h"

namespace {

constexpr size_t beside = LimitedHeap::bookkeeping;

class LimitedHeaps : public SimulatorTest {
protected:
    static void* Allocate(size_t size) { return ::operator new(size, std::nothrow); }
};

}  // namespace

TEST_F(LimitedHeaps, BlockTakesItsSizeAndABitMoreUntilItIsFreed) {
    LimitedHeap heap(1000);
    void* const block = Allocate(100);
    EXPECT_EQ(100 + beside, heap.Used());
    EXPECT_EQ(900 - beside, heap.Free());
    ::operator delete(block);
    EXPECT_EQ(0u, heap.Used());
    EXPECT_EQ(100 + beside, heap.Peak());
    EXPECT_EQ(0u, heap.Refusals());
}

TEST_F(LimitedHeaps, LastByteCanBeHadAndNotOneMore) {
    LimitedHeap heap(100 + beside);
    void* const tooLarge = Allocate(101);
    void* const fitting = Allocate(100);
    void* const further = Allocate(0);
    EXPECT_EQ(nullptr, tooLarge);
    EXPECT_NE(nullptr, fitting);
    EXPECT_EQ(nullptr, further);
    EXPECT_EQ(2u, heap.Refusals());
    EXPECT_EQ(0u, heap.Free());
    ::operator delete(fitting);
    void* const again = Allocate(100);
    EXPECT_NE(nullptr, again);
    ::operator delete(again);
}

TEST_F(LimitedHeaps, FormsThatThrowDoSo) {
    const LimitedHeap heap(100);
    EXPECT_THROW(::operator delete(::operator new(1000)), std::bad_alloc);
    EXPECT_THROW(::operator delete (::operator new (1000, std::align_val_t{64}), std::align_val_t{64}),
                 std::bad_alloc);
}

TEST_F(LimitedHeaps, SomebodyElseTakesFromTheSameRoom) {
    LimitedHeap heap(1000);
    EXPECT_TRUE(heap.Take(500));
    EXPECT_FALSE(heap.Take(500));
    EXPECT_EQ(nullptr, Allocate(500));
    heap.GiveBack(500);
    EXPECT_EQ(0u, heap.Used());
    EXPECT_EQ(2u, heap.Refusals());
}

TEST_F(LimitedHeaps, BlocksFromBeforeAndOfTheSimulatorAreNotKnown) {
    void* const earlier = Allocate(100);
    LimitedHeap heap(1000);
    ::operator delete(earlier);
    MessageBoxW(nullptr, u"A text that is longer than a short string", u"", MB_OK);
    EXPECT_EQ(0u, heap.Peak());
    TakeViolations();
}

TEST_F(LimitedHeaps, WatchMayLookOn) {
    LimitedHeap heap(100 + beside);
    AllocationWatch watch(1);
    void* const refused = Allocate(10);
    void* const block = Allocate(100);
    void* const none = Allocate(100);
    watch.Stop();
    EXPECT_EQ(nullptr, refused);
    EXPECT_NE(nullptr, block);
    EXPECT_EQ(nullptr, none);
    EXPECT_EQ(3u, watch.Count());
    EXPECT_EQ(1u, heap.Refusals());
    ::operator delete(block);
}

TEST_F(LimitedHeaps, NothingIsRefusedBehindIt) {
    { const LimitedHeap heap(0); }
    void* const block = Allocate(1000);
    EXPECT_NE(nullptr, block);
    ::operator delete(block);
}

TEST_F(LimitedHeaps, SecondOneIsAMistakeInTheTest) {
    LimitedHeap heap(1000);
    { const LimitedHeap other(0); }
    EXPECT_EQ(Lines{"a LimitedHeap begins while another one is there"}, TakeViolations());
    void* const block = Allocate(100);
    EXPECT_EQ(100 + beside, heap.Used()) << "the first one holds on";
    ::operator delete(block);
}
