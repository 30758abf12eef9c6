/* Servers that promise more than they have, or that answer in ways of their own. */
#include "hostile/HostileSearch.h"

namespace {

constexpr size_t megabyte = size_t{1} << 20;

/* What a map takes on the heap: a record and two pointers. */
constexpr size_t mapBytes = (sizeof(MapShopResult) + 3 * sizeof(void*) - 1) / sizeof(void*) * sizeof(void*) +
                            LimitedHeap::bookkeeping;

/* An entry of 20 bytes, which is the least that a map takes. */
std::string SmallestMap() {
    return MapShopReply().Map({}, 7, {}, {}).bytes;
}

std::string Repeated(std::string_view bytes, size_t times) {
    std::string all;
    all.reserve(bytes.size() * times);
    for (size_t n = 0; n < times; ++n)
        all += bytes;
    return all;
}

class HostileServer : public HostileSearch {
protected:
    /* A reply that announces as many entries as a number can. */
    static std::string Promise(std::string_view entries) {
        return MapShopReply().Int32(0).Int32(INT32_MAX).bytes + std::string(entries);
    }

    /* A search for which nothing is sent or nothing comes. */
    void ExpectNothing(WebReply reply, DWORD cause, size_t reads) {
        SearchModel expected({""});
        expected.cause = cause;
        expected.shortfalls = reads;
        Serve(std::move(reply), expected, {});
    }
};

}  // namespace

TEST_F(HostileServer, PromisesEverythingAndSendsNothing) {
    tally.emplace("promise of 2147483647 entries without bytes");
    const std::string head = Promise({});
    for (const Portions& portions : SmallPortions(head.size())) {
        for (const DWORD atEnd : {DWORD{LM_ERROR_REPLY_ENDED}, DWORD{10054}}) {
            Arrival arrival{head};
            arrival.atEnd = atEnd;
            Try(arrival, portions);
        }
    }
    EXPECT_EQ(1001u, SearchModel({head}).shortfalls);
}

TEST_F(HostileServer, PromisesEverythingAndSendsEntries) {
    tally.emplace("promise of 2147483647 entries with bytes");
    for (const std::string& entries :
         {Repeated(MapShopReply().Int32(3).bytes, megabyte / 4), Repeated(SmallestMap(), 5000),
          Repeated(MapShopReply().Int32(4).Int32(-1).bytes, 5000), std::string(megabyte, '\xFF'),
          std::string(megabyte, '\0')}) {
        const std::string bytes = Promise(entries);
        for (const Portions& portions : {Portions{}, {8}, {5}}) {
            SCOPED_TRACE(bytes.size());
            Try({bytes}, portions);
        }
    }
}

TEST_F(HostileServer, SendsOneByteARead) {
    tally.emplace("server that sends one byte a read");
    std::string entries = Repeated(SmallestMap(), 300);
    entries += MapShopReply().Map(WideString(1000, TEXT('x')), 1, TEXT("p"), TEXT("d")).bytes;
    Try({MapShopReply().Int32(0).Int32(301).bytes + entries + MapShopReply().Int32(24).bytes}, {1});
}

TEST_F(HostileServer, SendsAMegabyteARead) {
    tally.emplace("server that sends a megabyte a read");
    items = std::string(megabyte, '\x11');
    const size_t count = 3 * megabyte / 4;
    const std::string entries = Repeated(MapShopReply().Int32(3).bytes, count) + Repeated(SmallestMap(), 99);
    const auto entryCount = static_cast<int64_t>(count + 99);
    Try({MapShopReply().Int32(0).Int32(entryCount).bytes + entries + MapShopReply().Int32(24).bytes}, {});
    EXPECT_EQ(4u, device.CountCalls("InternetReadFile"));
    // All that is asked for, many times over, behind a reply that has ended.
    Try({MapShopReply().Int32(0).Int32(0).Int32(7).bytes + std::string(8 * megabyte, 'x')}, {});
    EXPECT_EQ(1u, device.CountCalls("InternetReadFile"));
}

TEST_F(HostileServer, SendsNothing) {
    tally.emplace("server that sends nothing");
    ExpectNothing(WebReply::WithBody(""), LM_ERROR_REPLY_ENDED, 1);
    ExpectNothing(WebReply::Nothing(), LM_ERROR_REPLY_ENDED, 1);
    ExpectNothing(WebReply::WithStatus(500), 0x21000000 + 500, 1);
    ExpectNothing(WebReply::Refused(), ERROR_INTERNET_CANNOT_CONNECT, 0);
    ExpectNothing(WebReply::TimedOut(), ERROR_INTERNET_TIMEOUT, 0);
    for (const DWORD error : {10054u, 12030u, 12002u}) {
        WebReply reset = WebReply::WithBody("");
        reset.breaks = WebReply::Break::Reset;
        reset.resetError = error;
        ExpectNothing(reset, error, 1);
    }
}

TEST_F(HostileServer, AnnouncesAnyLength) {
    tally.emplace("search reply that announces another length");
    const std::string whole = SampleReply().reply.bytes;
    for (const char16_t* const text : {u"-1", u"0", u"1", u"2147483647", u"99999999999999999999", u"x"}) {
        for (const size_t size : {size_t{0}, size_t{1}, whole.size() - 1, whole.size()}) {
            SCOPED_TRACE(size);
            const std::string bytes = whole.substr(0, size);
            WebReply reply = WebReply::WithBody(bytes);
            reply.headers = {{u"Content-Length", text}};
            Serve(std::move(reply), SearchModel({bytes}), {});
        }
    }
}

TEST_F(HostileServer, FailsEveryReadFromAnyOneOn) {
    tally.emplace("server of which every further read fails");
    const std::string whole = SampleReply().reply.bytes;
    for (size_t came = 0; came < whole.size() && !HasFailure(); ++came) {
        SCOPED_TRACE(came);
        Arrival arrival{std::string_view(whole).substr(0, came)};
        arrival.atEnd = ERROR_INTERNET_TIMEOUT;
        const SearchModel expected(arrival);
        device.FailCall("InternetReadFile", came + 1, ERROR_INTERNET_TIMEOUT, Failing::FromThereOn);
        WebReply reply = WebReply::WithBody(whole);
        reply.chunks = {1};
        Serve(reply, expected, {1});
        device.StopFailing();
    }
}

TEST_F(HostileServer, SendsMoreMapsThanThereIsMemoryFor) {
    tally.emplace("search that runs out of memory");
    const std::string bytes = Promise(Repeated(SmallestMap(), 1000));
    SearchModel expected({bytes});
    const std::vector<MapShopResult> all = expected.maps;
    ASSERT_EQ(1000u, all.size());
    expected.finalValue = 0;
    for (size_t room = 4096; room <= 2 * megabyte && !HasFailure(); room += 4099) {
        SCOPED_TRACE(room);
        tally->Add();
        device.AddHost(host, 80, WebReply::WithBody(bytes));
        device.ForgetCalls();
        LimitedHeap heap(room);
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        const DWORD cause = GetLastError();
        EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, cause);
        EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
        // As many maps as there is room for, beside what the search itself takes.
        const size_t count = heap.Used() / mapBytes;
        EXPECT_GE((count + 2) * 2700, room);
        EXPECT_LE(device.CountCalls("InternetReadFile"), (count + 1) * 20 / receiveBufferSize + 2);
        expected.maps.assign(all.begin(), all.begin() + static_cast<ptrdiff_t>(count));
        ExpectResults(search, expected);
        EXPECT_EQ(0u, heap.Used());
    }
}
