/* Replies to a search of the map shop, whatever they hold and in whatever portions they come. The first byte
 * is the number of items asked for; FuzzedReply.h tells the rest. */
#include <numeric>
#include <vector>

#include "FuzzedDevice.h"
#include "FuzzedReply.h"
#include "machine/AllocationWatch.h"

namespace {

/* What an application is to see. */
struct Expected {
    std::vector<MapShopResult> maps;
    int32_t finalValue = 0;
    DWORD cause = 0;
    bool isEndless = false;  // it promises a thousand entries more than there are
};

template <size_t capacity>
void SetField(char16_t (&field)[capacity], const std::u16string& text) {
    std::ranges::fill(field, u'\0');
    std::ranges::copy(text, field);
}

void ReadMap(ReplyReading& reading, std::vector<MapShopResult>& maps) {
    MapShopResult map{};
    SetField(map.text1, reading.Text(199));
    map.number = reading.Int32(0);
    SetField(map.text2, reading.Text(99));
    SetField(map.text3, reading.Text(999));
    if (reading.IsGood()) maps.push_back(map);
}

Expected ExpectedOf(const FuzzedReply& fuzzed) {
    ReplyReading reading(fuzzed.Arriving());
    Expected expected;
    const int32_t status = reading.Int32(-1);
    if (status == 0) {
        const int32_t count = reading.Int32(0);
        int empty = 0;
        for (int32_t entry = 0; entry < count; ++entry) {
            const int32_t type = reading.Int32(0);
            empty = reading.FoundAny() ? 0 : empty + 1;
            expected.isEndless = empty == 1000;
            if (expected.isEndless) break;
            if (type == 4) ReadMap(reading, expected.maps);
        }
        expected.finalValue = reading.Int32(0);
    }
    expected.cause = fuzzed.CauseOf(reading, status);
    if (expected.cause == ERROR_SUCCESS && !reading.IsReadable()) expected.cause = ERROR_INVALID_DATA;
    return expected;
}

class SearchReply final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        const int32_t items = input.TakeByte();
        const FuzzedReply fuzzed(input);
        const Expected expected = ExpectedOf(fuzzed);
        // Which costs as much as fifty other replies: one in sixteen has to do.
        if (expected.isEndless && std::accumulate(bytes.begin(), bytes.end(), 0U) % 16 != 0) return;
        handheld.BeginRun();
        fuzzed.GiveOn(handheld.device);
        Search(items, expected);
        // Each read of the reply brings bytes, but for those of a thousand empty entries and of one map.
        Require(handheld.device.CountCalls("InternetReadFile") <= fuzzed.reply.body.size() + 1010,
                "a reply that has ended is not read for ever");
        handheld.EndRun();
    }

private:
    void Search(int32_t items, const Expected& expected) const {
        AllocationWatch watch;
        MapShopSearch* const search = LMMapShopSearch(queries.data(), items);
        const DWORD cause = GetLastError();
        watch.Stop();
        Require(search != nullptr, "there is a search");
        // A map is a node, the three texts of which may each be longer than those before it.
        Require(watch.Count() <= 20 + 7 * (expected.maps.size() + 1), "memory goes by the maps that came");
        MapShopResult map;
        for (const MapShopResult& wanted : expected.maps) {
            Require(LMMapShopGetNext(search, &map) == 1, "no map that came whole is missing");
            Require(memcmp(&map, &wanted, sizeof map) == 0, "maps are as they came");
        }
        Require(LMMapShopGetNext(search, &map) == 0, "there are no more maps than came whole");
        Require(LMMapShopClose(search) == expected.finalValue, "the final value is that of the reply");
        Require(cause == expected.cause, "the last error tells why not all has come");
    }

    std::string queries = std::string(size_t{256} * 16, '\x11');
    FuzzedDevice handheld;
};

const bool isAdded = AddFuzzTarget<SearchReply>("SearchReply");

}  // namespace
