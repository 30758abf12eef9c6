/* Searches whose replies come as a test wants it, compared with SearchModel. */
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "hostile/Portions.h"
#include "hostile/SearchModel.h"
#include "hostile/Tally.h"
#include "machine/LimitedHeap.h"
#include "support/MapShopReply.h"
#include "support/NetworkTest.h"
#include "transport/BufferSizes.h"

/* What a search may have on the heap when it has got `maps` maps. */
inline size_t MemoryFor(size_t maps) {
    return 2700 * maps + 200 * size_t{1024};
}

/* A number of a reply: its place, what it counts or is, and the greatest that is accepted there. */
struct ReplyNumber {
    std::string name;
    size_t at = 0;
    std::vector<int64_t> limits;
};

/* A reply of which every number can be found again. */
class NumberedReply {
public:
    NumberedReply& Number(std::string name, int64_t value, std::vector<int64_t> limits) {
        limits.push_back(value);
        numbers.push_back({std::move(name), reply.bytes.size(), std::move(limits)});
        reply.Int32(value);
        return *this;
    }
    NumberedReply& Text(std::string name, WideStringView text, int64_t capacity) {
        Number(std::move(name), static_cast<int64_t>(text.size()), {100000, capacity});
        reply.Units(text);
        return *this;
    }
    NumberedReply& Map(const std::string& name, WideStringView text1, int32_t number, WideStringView text2,
                       WideStringView text3) {
        Number(name + " type", 4, {}).Text(name + " text1", text1, 200);
        Number(name + " number", number, {}).Text(name + " text2", text2, 100);
        return Text(name + " text3", text3, 1000);
    }

    MapShopReply reply;
    std::vector<ReplyNumber> numbers;
};

/* Maps of every kind, entries without fields between them, and the final value 24. */
inline NumberedReply SampleReply() {
    NumberedReply sample;
    sample.Number("status", 0, {}).Number("count", 5, {999, 1000});
    sample.Map("first", TEXT("Malta"), 1200, TEXT("/m"), TEXT(""));
    sample.Number("nothing", 3, {});
    sample.Map("second", WideString(WideStringView(TEXT("\xCE\0x"), 3)), -5, WideString(101, TEXT('p')),
               TEXT("\xD83D\xDE00"));
    sample.Number("nothing more", 0, {});
    sample.Map("third", TEXT(""), INT32_MIN, TEXT(""), TEXT("d"));
    sample.Number("final value", 24, {});
    return sample;
}

class HostileSearch : public NetworkTest {
protected:
    static constexpr const char16_t* host = u"online.orvande.example";

    /* A search whose reply comes in these portions. */
    void Try(const Arrival& arrival, const Portions& portions) {
        WebReply reply = WebReply::WithBody(std::string(arrival.bytes));
        reply.status = arrival.httpStatus;
        reply.chunks = portions;
        if (arrival.atEnd != LM_ERROR_REPLY_ENDED) {
            reply.breaks = WebReply::Break::Reset;
            reply.breakAt = arrival.bytes.size();
            reply.resetError = arrival.atEnd;
        }
        Serve(std::move(reply), SearchModel(arrival), portions);
    }

    /* The same for a reply that may be made while it comes, or not at all. */
    void Serve(WebReply reply, const SearchModel& expected, const Portions& portions) {
        tally->Add();
        device.AddHost(host, 80, std::move(reply));
        device.ForgetCalls();
        LimitedHeap heap(SIZE_MAX);
        SetLastError(4711);
        MapShopSearch* const search = LMMapShopSearch(items.data(), static_cast<int32_t>(items.size() / 16));
        const DWORD cause = GetLastError();
        EXPECT_LE(heap.Peak(), MemoryFor(expected.maps.size()) + items.size());
        EXPECT_EQ(expected.cause, cause);
        ExpectResults(search, expected);
        EXPECT_EQ(0u, heap.Used()) << "all is given back";
        ExpectCalls(expected, portions);
    }

    /* Takes the results, and closes the search. */
    static void ExpectResults(MapShopSearch* search, const SearchModel& expected) {
        MapShopResult map;
        for (const MapShopResult& wanted : expected.maps) {
            ASSERT_EQ(1, LMMapShopGetNext(search, &map));
            EXPECT_EQ(0, memcmp(&wanted, &map, sizeof map));
        }
        EXPECT_EQ(0, LMMapShopGetNext(search, &map));
        EXPECT_EQ(expected.finalValue, LMMapShopClose(search));
    }

    /* Each portion of what is read takes a call, and each value of which bytes are missing one more. A reply
     * that promises what does not come is asked for a thousand entries, and for the values of one map. */
    void ExpectCalls(const SearchModel& expected, const Portions& portions) {
        const size_t most = std::max<size_t>(receiveBufferSize, 8 + items.size());
        const size_t reads = ReadsFor(expected.consumed, portions, most) + expected.shortfalls;
        EXPECT_EQ(reads, device.CountCalls("InternetReadFile"));
        EXPECT_LE(expected.shortfalls, 1006u);
        EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle")) << "the connection is closed";
        EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
        EXPECT_EQ(2u, device.CountCalls("SetCursor"));
        EXPECT_LE(device.CountCalls("HttpQueryInfoW"), 1u);
    }

    std::optional<Tally> tally;
    std::string items;  // 16 bytes each
};
