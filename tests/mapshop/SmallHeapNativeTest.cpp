/* A reply that is larger than the handheld's memory, which the search shares with the rest of its process. */
#include <vector>

#include "machine/Allocations.h"
#include "machine/LimitedHeap.h"
#include "mapshop/MapShopFixture.h"
#include "transport/BufferSizes.h"

namespace {

constexpr size_t kilobyte = 1024;
constexpr size_t megabyte = 1024 * kilobyte;

/* What a map takes: the record and two pointers, and what a heap keeps beside it. 2620 on a handheld. */
constexpr size_t mapBytes = (sizeof(MapShopResult) + 3 * sizeof(void*) - 1) / sizeof(void*) * sizeof(void*) +
                            LimitedHeap::bookkeeping;

/* The application and all else that lives in the process: it has memory, asks for more and gives some back,
 * and goes on without when there is none. */
class RestOfProcess {
public:
    explicit RestOfProcess(LimitedHeap& sharedHeap) : heap(sharedHeap) {}

    bool Ask(size_t size) {
        if (!heap.Take(size)) return false;
        const simulator::OwnWork list;
        blocks.push_back(size);
        return true;
    }

    void GiveBackOldest() {
        if (blocks.empty()) return;
        const simulator::OwnWork list;
        heap.GiveBack(blocks.front());
        blocks.erase(blocks.begin());
    }

    void GiveAllBack() {
        while (!blocks.empty())
            GiveBackOldest();
    }

    [[nodiscard]] size_t Bytes() const {
        size_t bytes = 0;
        for (const size_t size : blocks)
            bytes += size + LimitedHeap::bookkeeping;
        return bytes;
    }

private:
    LimitedHeap& heap;
    std::vector<size_t> blocks;
};

class SmallHeap : public MapShop, public testing::WithParamInterface<size_t> {
protected:
    /* Entries of 20 bytes, numbered, one more than the whole heap has room for. At every portion of them the
     * rest of the process has something to do, too. */
    void AnswerMoreThanFits(const std::function<void()>& restOfProcess) {
        const simulator::OwnWork shop;
        const auto count = static_cast<int32_t>(GetParam() / mapBytes + 1);
        MapShopReply reply;
        reply.Int32(0).Int32(count);
        for (int32_t number = 0; number < count; ++number)
            reply.Map({}, number, {}, {});
        reply.Int32(24);
        WebReply made;
        made.produce = [=, bytes = reply.bytes, position = size_t{0}](char* buffer, size_t most) mutable {
            restOfProcess();
            const size_t some = bytes.copy(buffer, most, position);
            position += some;
            return some;
        };
        Answer(made);
    }

    /* How many maps were read; they come in their order. */
    static int32_t CountMaps(MapShopSearch* search) {
        MapShopResult map;
        int32_t count = 0;
        while (LMMapShopGetNext(search, &map) == 1) {
            EXPECT_EQ(count, map.number);
            EXPECT_EQ(0, map.text1[0]);
            ++count;
        }
        EXPECT_EQ(DWORD{ERROR_NO_MORE_ITEMS}, GetLastError());
        return count;
    }

    void ExpectConnectionClosed() {
        EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
        EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
        EXPECT_EQ(2u, device.CountCalls("SetCursor"));
    }

    MapShopSearch* SearchAndExpectCause(DWORD expected) {
        device.ForgetCalls();
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        const DWORD cause = GetLastError();
        EXPECT_NE(nullptr, search);
        EXPECT_EQ(expected, cause);
        ExpectConnectionClosed();
        return search;
    }
};

std::string NameOf(const testing::TestParamInfo<size_t>& info) {
    return std::to_string(info.param / megabyte) + "MB";
}

}  // namespace

TEST_P(SmallHeap, IsFilledByTheResultsSoFarAndGivenBackWithThem) {
    AnswerMoreThanFits([] {});
    LimitedHeap heap(GetParam());
    MapShopSearch* const search = SearchAndExpectCause(ERROR_NOT_ENOUGH_MEMORY);
    // One more map has no room beside the buffer, which is free again, and nothing larger has.
    EXPECT_LT(heap.Free(), mapBytes + receiveBufferSize + 2 * LimitedHeap::bookkeeping);
    EXPECT_FALSE(heap.Take(4 * kilobyte));
    // Reading needs no memory.
    const size_t rest = heap.Free() - LimitedHeap::bookkeeping;
    EXPECT_TRUE(heap.Take(rest));
    const size_t refusals = heap.Refusals();
    const int32_t count = CountMaps(search);
    EXPECT_EQ(refusals, heap.Refusals());
    heap.GiveBack(rest);
    // Beside the maps there are the search and, while it ran, its buffer.
    EXPECT_GT((static_cast<size_t>(count) + 2) * mapBytes, GetParam());
    EXPECT_EQ(0, LMMapShopClose(search)) << "the reply was not read to its end";
    EXPECT_EQ(0u, heap.Used());
}

TEST_P(SmallHeap, IsSharedWithAProcessThatLivesOn) {
    LimitedHeap heap(GetParam());
    RestOfProcess process(heap);
    while (process.Bytes() < GetParam() / 2)
        ASSERT_TRUE(process.Ask(60 * kilobyte));
    size_t asked = 0;
    AnswerMoreThanFits([&] {
        if (++asked % 8 == 0) process.GiveBackOldest();
        if (asked % 8 < 2) process.Ask(60 * kilobyte);
    });
    MapShopSearch* const search = SearchAndExpectCause(ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_LT(8u, asked);

    // What it has, it keeps. It gets no more until the search is closed, but for what it gives back itself.
    EXPECT_FALSE(process.Ask(60 * kilobyte));
    process.GiveBackOldest();
    EXPECT_TRUE(process.Ask(60 * kilobyte));
    const size_t kept = process.Bytes();
    EXPECT_LT(0, CountMaps(search));
    EXPECT_EQ(0, LMMapShopClose(search));
    EXPECT_EQ(kept, heap.Used()) << "the search has left nothing";
    EXPECT_TRUE(process.Ask(GetParam() - kept - kilobyte)) << "in one piece";
    process.GiveAllBack();
    EXPECT_EQ(0u, heap.Used());
}

TEST_P(SmallHeap, HasRoomForTheNextSearchOnceThisOneIsClosed) {
    LimitedHeap heap(GetParam());
    for (int turn = 0; turn < 2; ++turn) {
        AnswerMoreThanFits([] {});
        MapShopSearch* const full = SearchAndExpectCause(ERROR_NOT_ENOUGH_MEMORY);
        {
            const simulator::OwnWork shop;
            Answer(TwoMaps());
        }
        // As long as it is open, another one finds no room for a map, if any for itself.
        MapShopSearch* const none = LMMapShopSearch(nullptr, 0);
        EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, GetLastError());
        LMMapShopClose(none);
        LMMapShopClose(full);
        MapShopSearch* const narrower = SearchAndExpectCause(ERROR_SUCCESS);
        MapShopResult map;
        EXPECT_EQ(1, LMMapShopGetNext(narrower, &map));
        EXPECT_EQ(1200, map.number);
        EXPECT_EQ(1, LMMapShopGetNext(narrower, &map));
        EXPECT_EQ(24, LMMapShopClose(narrower));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, SmallHeap, testing::Values(8 * megabyte, 16 * megabyte, 32 * megabyte), NameOf);
