/* The exported map shop functions, as an application calls them, against scripted answers of the service. */
#include <gtest/gtest.h>

#include "Device.h"
#include "LMOnline.h"
#include "support/DeviceTest.h"
#include "support/MapShopReply.h"
#include "transport/NetworkConnection.h"

using namespace std::string_view_literals;

namespace {

constexpr WCHAR serviceHost[] = TEXT("online.orvande.example");

class MapShop : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        managedConnection = nullptr;
    }
    void TearDown() override {
        managedConnection = nullptr;
        DeviceTest::TearDown();
    }

    void Answer(WebReply reply) { device.AddHost(serviceHost, 80, std::move(reply)); }
    void Answer(const MapShopReply& reply) { Answer(WebReply::WithBody(reply.bytes)); }

    struct Outcome {
        std::vector<MapShopResult> maps;
        int32_t finalValue = 0;
    };

    static Outcome Take(MapShopSearch* search) {
        Outcome outcome;
        MapShopResult map;
        while (LMMapShopGetNext(search, &map) == 1)
            outcome.maps.push_back(map);
        outcome.finalValue = LMMapShopClose(search);
        return outcome;
    }

    static Outcome Search() {
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        EXPECT_NE(nullptr, search);
        return Take(search);
    }

    void ExpectNothingFound() {
        const Outcome outcome = Search();
        EXPECT_EQ(0u, outcome.maps.size());
        EXPECT_EQ(0, outcome.finalValue);
        EXPECT_TRUE(device.MessageBoxes().empty());
    }

    Device& device = Device::Current();
};

MapShopReply TwoMaps() {
    return MapShopReply()
        .Int32(0)
        .Int32(2)
        .Map(TEXT("Malta"), 1200, TEXT("/maps/malta.map"), TEXT("All of it."))
        .Map(TEXT("\x00CEle-de-France"), -5, TEXT("/p"), TEXT(""))
        .Int32(24);
}

}  // namespace

TEST_F(MapShop, BodyIsTheCodeTheCountAndTheItems) {
    Answer(MapShopReply().Int32(0).Int32(0).Int32(0));
    const char items[] = "0123456789abcdefFEDCBA9876543210";
    LMMapShopClose(LMMapShopSearch(items, 2));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& sent = device.Requests()[0];
    EXPECT_EQ(
        "\x65\0\0\0\2\0\0\0"
        "0123456789abcdefFEDCBA9876543210"sv,
        sent.body);
    EXPECT_EQ(u"POST", sent.verb);
    EXPECT_EQ(u"cgi-bin/mapstore.cgi", sent.path);
    EXPECT_EQ(u"online.orvande.example", sent.host);
    EXPECT_EQ(80, sent.port);
    EXPECT_FALSE(sent.secure);
}

TEST_F(MapShop, CountOf0SendsExactlyEightBytesAndTheReplyIsReadAsUsual) {
    Answer(TwoMaps());
    EXPECT_EQ(2u, Search().maps.size());
    EXPECT_EQ("\x65\0\0\0\0\0\0\0"sv, device.Requests()[0].body);
}

TEST_F(MapShop, CountOf0WithItemsSendsNoneOfThem) {
    Answer(TwoMaps());
    LMMapShopClose(LMMapShopSearch("0123456789abcdef", 0));
    EXPECT_EQ("\x65\0\0\0\0\0\0\0"sv, device.Requests()[0].body);
}

TEST_F(MapShop, DataConnectionIsAskedForBeforeAndGivenUpAfterwards) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    EXPECT_EQ(1u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"))
        << "nothing stays connected behind the search";
    EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
    LMMapShopClose(search);
}

TEST_F(MapShop, ResultsComeInTheOrderOfTheReplyWithAllTheirFields) {
    Answer(TwoMaps());
    const Outcome outcome = Search();
    ASSERT_EQ(2u, outcome.maps.size());
    EXPECT_EQ(TEXT("Malta"), WideString(outcome.maps[0].text1));
    EXPECT_EQ(1200, outcome.maps[0].number);
    EXPECT_EQ(TEXT("/maps/malta.map"), WideString(outcome.maps[0].text2));
    EXPECT_EQ(TEXT("All of it."), WideString(outcome.maps[0].text3));
    EXPECT_EQ(TEXT("\x00CEle-de-France"), WideString(outcome.maps[1].text1));
    EXPECT_EQ(-5, outcome.maps[1].number);
    EXPECT_EQ(TEXT("/p"), WideString(outcome.maps[1].text2));
    EXPECT_EQ(TEXT(""), WideString(outcome.maps[1].text3));
    EXPECT_EQ(24, outcome.finalValue);
}

TEST_F(MapShop, NoEntriesAndAFinalValueOf7) {
    Answer(MapShopReply().Int32(0).Int32(0).Int32(7));
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(0, LMMapShopGetNext(search, &map));
    EXPECT_EQ(7, LMMapShopClose(search));
}

TEST_F(MapShop, EntryOfAnotherTypeConsumesOnlyItsType) {
    Answer(MapShopReply()
               .Int32(0)
               .Int32(3)
               .Map(TEXT("one"), 1, TEXT("p1"), TEXT("d1"))
               .Int32(3)
               .Map(TEXT("two"), 2, TEXT("p2"), TEXT("d2"))
               .Int32(9));
    const Outcome outcome = Search();
    ASSERT_EQ(2u, outcome.maps.size());
    EXPECT_EQ(TEXT("one"), WideString(outcome.maps[0].text1));
    EXPECT_EQ(TEXT("two"), WideString(outcome.maps[1].text1));
    EXPECT_EQ(9, outcome.finalValue);
}

TEST_F(MapShop, UnknownEntryTypesCarryNothing) {
    MapShopReply reply;
    reply.Int32(0).Int32(6);
    for (const int32_t type : {0, -1, 5, INT32_MAX, INT32_MIN, 0x04000000})
        reply.Int32(type);
    Answer(reply.Int32(11));
    const Outcome outcome = Search();
    EXPECT_EQ(0u, outcome.maps.size());
    EXPECT_EQ(11, outcome.finalValue);
}

TEST_F(MapShop, StatusOf1GivesNoResultsAndAFinalValueOf0) {
    Answer(MapShopReply().Int32(1).Int32(1).Map(TEXT("a"), 1, TEXT("b"), TEXT("c")).Int32(5));
    ExpectNothingFound();
}

TEST_F(MapShop, AnyOtherStatusGivesNothing) {
    for (const int64_t status : {-1ll, 2ll, 0x7FFFFFFFll, 0x80000000ll}) {
        Answer(MapShopReply().Int32(status).Int32(0).Int32(5));
        ExpectNothingFound();
    }
}

TEST_F(MapShop, LongTextsAreCutToTheirFields) {
    const WideString longText(2000, TEXT('x'));
    Answer(MapShopReply()
               .Int32(0)
               .Int32(2)
               .Map(longText.substr(0, 250), 1, longText.substr(0, 100), longText)
               .Map(TEXT("next"), 2, TEXT("p"), TEXT("d"))
               .Int32(3));
    const Outcome outcome = Search();
    ASSERT_EQ(2u, outcome.maps.size());
    EXPECT_EQ(longText.substr(0, 199), WideString(outcome.maps[0].text1));
    EXPECT_EQ(longText.substr(0, 99), WideString(outcome.maps[0].text2));
    EXPECT_EQ(longText.substr(0, 999), WideString(outcome.maps[0].text3));
    EXPECT_EQ(TEXT("next"), WideString(outcome.maps[1].text1));
    EXPECT_EQ(3, outcome.finalValue);
}

TEST_F(MapShop, TextsThatJustFitAreWhole) {
    const WideString longText(1000, TEXT('x'));
    Answer(MapShopReply()
               .Int32(0)
               .Int32(1)
               .Map(longText.substr(0, 199), 1, longText.substr(0, 99), longText.substr(0, 999))
               .Int32(3));
    const Outcome outcome = Search();
    ASSERT_EQ(1u, outcome.maps.size());
    EXPECT_EQ(199u, WideString(outcome.maps[0].text1).size());
    EXPECT_EQ(99u, WideString(outcome.maps[0].text2).size());
    EXPECT_EQ(999u, WideString(outcome.maps[0].text3).size());
}

TEST_F(MapShop, TextOf100000UnitsIsTakenIn) {
    Answer(MapShopReply()
               .Int32(0)
               .Int32(1)
               .Map(WideString(100000, TEXT('x')), 1, TEXT("p"), TEXT("d"))
               .Int32(3));
    const Outcome outcome = Search();
    ASSERT_EQ(1u, outcome.maps.size());
    EXPECT_EQ(199u, WideString(outcome.maps[0].text1).size());
    EXPECT_EQ(TEXT("p"), WideString(outcome.maps[0].text2));
    EXPECT_EQ(3, outcome.finalValue);
}

TEST_F(MapShop, TextOf100001UnitsIsRefusedAndItsRecordKeptWithThatTextEmptyOutOfStep) {
    // The units of the refused text are read as what follows it: number 'ab', then an empty text2 and text3.
    Answer(MapShopReply()
               .Int32(0)
               .Int32(1)
               .Int32(4)
               .Int32(100001)
               .Units(TEXT("ab"))
               .Int32(0)
               .Int32(0)
               .Int32(77));
    const Outcome outcome = Search();
    ASSERT_EQ(1u, outcome.maps.size());
    EXPECT_EQ(TEXT(""), WideString(outcome.maps[0].text1));
    EXPECT_EQ(0x00620061, outcome.maps[0].number);
    EXPECT_EQ(77, outcome.finalValue);
}

TEST_F(MapShop, TextOfANegativeLengthIsRefusedInTheSameWay) {
    Answer(MapShopReply().Int32(0).Int32(1).Int32(4).Text(TEXT("a")).Int32(5).Int32(-1).Int32(-2).Int32(8));
    const Outcome outcome = Search();
    ASSERT_EQ(1u, outcome.maps.size());
    EXPECT_EQ(TEXT("a"), WideString(outcome.maps[0].text1));
    EXPECT_EQ(5, outcome.maps[0].number);
    EXPECT_EQ(TEXT(""), WideString(outcome.maps[0].text2));
    EXPECT_EQ(TEXT(""), WideString(outcome.maps[0].text3));
    EXPECT_EQ(8, outcome.finalValue);
}

TEST_F(MapShop, CountOfMinus1ReadsTheFinalValueNext) {
    Answer(MapShopReply().Int32(0).Int32(-1).Int32(6));
    const Outcome outcome = Search();
    EXPECT_EQ(0u, outcome.maps.size());
    EXPECT_EQ(6, outcome.finalValue);
}

TEST_F(MapShop, HugeCountWithAnEndedReplyStopsAskingAfterAThousandEntries) {
    Answer(MapShopReply().Int32(0).Int32(INT32_MAX).Map(TEXT("a"), 1, TEXT("b"), TEXT("c")));
    const Outcome outcome = Search();
    EXPECT_EQ(1u, outcome.maps.size());
    EXPECT_EQ(0, outcome.finalValue);
    EXPECT_LT(device.CountCalls("InternetReadFile"), 1100u);
}

TEST_F(MapShop, BytesThatComeAfterAFailedReadAreStillLookedThrough) {
    // One network read fails in the middle; what follows is out of use, but the final value is still read.
    WebReply reply = WebReply::WithBody(TwoMaps().bytes);
    reply.chunks = {8, 4, 4};
    Answer(reply);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    const Outcome outcome = Search();
    EXPECT_EQ(0u, outcome.maps.size()) << "nothing is kept once a read has failed";
}

TEST_F(MapShop, ReplyCutAtAnyByteKeepsTheMapsBeforeTheCut) {
    const std::string whole = TwoMaps().bytes;
    const size_t firstMap = 8 + 4 + (4 + 10) + 4 + (4 + 30) + (4 + 20);
    const size_t secondMap = firstMap + 4 + (4 + 26) + 4 + (4 + 4) + 4;
    ASSERT_EQ(whole.size(), secondMap + 4);
    for (const auto breaks : {WebReply::Break::Close, WebReply::Break::Reset}) {
        for (size_t cut = 0; cut < whole.size(); ++cut) {
            SCOPED_TRACE(cut);
            WebReply reply = WebReply::WithBody(whole);
            reply.breaks = breaks;
            reply.breakAt = cut;
            Answer(reply);
            const Outcome outcome = Search();
            // A value of which some bytes came counts as read: so does the last one of a map.
            const size_t kept = (cut >= firstMap - 1 ? 1u : 0u) + (cut >= secondMap - 3 ? 1u : 0u);
            EXPECT_EQ(kept, outcome.maps.size());
            EXPECT_EQ(cut > secondMap ? 24 : 0, outcome.finalValue);
        }
    }
}

TEST_F(MapShop, FinalValueOfWhichSomeBytesCameHasThose) {
    std::string bytes = MapShopReply().Int32(0).Int32(0).Int32(0x12345678).bytes;
    bytes.resize(10);
    Answer(WebReply::WithBody(bytes));
    EXPECT_EQ(0x5678, Search().finalValue);
}

TEST_F(MapShop, FailuresOfTheNetworkGiveAHandleWithoutResults) {
    ExpectNothingFound();  // nobody knows the host
    for (const WebReply& reply : {WebReply::Refused(), WebReply::TimedOut(), WebReply::Nothing(),
                                  WebReply::WithBody(""), WebReply::WithStatus(500)}) {
        Answer(reply);
        ExpectNothingFound();
    }
}

TEST_F(MapShop, FailureOfAnySingleCallGivesAHandleAndLeavesNothingOpen) {
    Answer(TwoMaps());
    for (const char* function :
         {"ConnMgrMapURL", "ConnMgrEstablishConnectionSync", "InternetOpenW", "InternetConnectW",
          "HttpOpenRequestW", "HttpSendRequestW", "InternetReadFile", "LoadCursorW", "SetCursor",
          "InternetCloseHandle", "ConnMgrReleaseConnection"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_GEN_FAILURE);
        const Outcome outcome = Search();
        EXPECT_TRUE(outcome.maps.empty() || outcome.maps.size() == 2);
    }
}

TEST_F(MapShop, TenMegabytesOfEntriesAreTakenInEntryByEntry) {
    MapShopReply head;
    head.Int32(0).Int32(INT32_MAX);
    const std::string entry = MapShopReply().Int32(3).bytes;
    size_t position = 0;
    WebReply reply;
    reply.produce = [&](char* buffer, size_t most) {
        constexpr size_t whole = 10'000'000;
        size_t made = 0;
        for (; made < most && position < whole; ++made, ++position)
            buffer[made] = position < 8 ? head.bytes[position] : entry[position % 4];
        return made;
    };
    Answer(reply);
    const Outcome outcome = Search();
    EXPECT_EQ(0u, outcome.maps.size());
    EXPECT_EQ(0, outcome.finalValue);
}

TEST_F(MapShop, TenMegabytesBehindAFinishedReplyAreLeftAlone) {
    MapShopReply reply = TwoMaps();
    reply.bytes.append(10'000'000, 'x');
    Answer(reply);
    const Outcome outcome = Search();
    EXPECT_EQ(2u, outcome.maps.size());
    EXPECT_EQ(24, outcome.finalValue);
    EXPECT_LT(device.CountCalls("InternetReadFile"), 10u);
}

TEST_F(MapShop, NegativeCountGivesAHandleWithoutResultsAndSendsNothing) {
    for (const int32_t count : {-1, INT32_MIN}) {
        MapShopSearch* const search = LMMapShopSearch("0123456789abcdef", count);
        ASSERT_NE(nullptr, search);
        const Outcome outcome = Take(search);
        EXPECT_TRUE(outcome.maps.empty());
        EXPECT_EQ(0, outcome.finalValue);
    }
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(MapShop, NullItemsWithAPositiveCountGiveAHandleWithoutResultsAndSendNothing) {
    for (const int32_t count : {1, INT32_MAX}) {
        MapShopSearch* const search = LMMapShopSearch(nullptr, count);
        ASSERT_NE(nullptr, search);
        EXPECT_TRUE(Take(search).maps.empty());
    }
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(MapShop, MoreItemsThan32BitsCanCountSendNothing) {
    MapShopSearch* const search = LMMapShopSearch("0123456789abcdef", 0x10000000);
    ASSERT_NE(nullptr, search);
    EXPECT_TRUE(Take(search).maps.empty());
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(MapShop, NullHandleGives0) {
    MapShopResult map;
    EXPECT_EQ(0, LMMapShopGetNext(nullptr, &map));
    EXPECT_EQ(0, LMMapShopGetNext(nullptr, nullptr));
    EXPECT_EQ(0, LMMapShopClose(nullptr));
}

TEST_F(MapShop, NullRecordGives0AndTakesNoResult) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    EXPECT_EQ(0, LMMapShopGetNext(search, nullptr));
    EXPECT_EQ(2u, Take(search).maps.size());
}

TEST_F(MapShop, AfterTheLastResultTheBufferStaysAsItWas) {
    Answer(MapShopReply().Int32(0).Int32(1).Map(TEXT("a"), 1, TEXT("b"), TEXT("c")).Int32(0));
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(1, LMMapShopGetNext(search, &map));
    MapShopResult untouched;
    memset(&untouched, 0xAB, sizeof untouched);
    map = untouched;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(0, LMMapShopGetNext(search, &map));
        EXPECT_EQ(0, memcmp(&map, &untouched, sizeof map));
    }
    LMMapShopClose(search);
}

TEST_F(MapShop, WholeRecordIsCopied) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    memset(&map, 0xAB, sizeof map);
    EXPECT_EQ(1, LMMapShopGetNext(search, &map));
    EXPECT_EQ(0, map.text1[199]);
    EXPECT_EQ(0, map.text2[99]);
    EXPECT_EQ(0, map.text3[999]);
    LMMapShopClose(search);
}

TEST_F(MapShop, SearchMayBeClosedBeforeAllResultsAreRead) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(1, LMMapShopGetNext(search, &map));
    EXPECT_EQ(24, LMMapShopClose(search));
}

TEST_F(MapShop, SearchesAreIndependent) {
    Answer(TwoMaps());
    MapShopSearch* const first = LMMapShopSearch(nullptr, 0);
    Answer(MapShopReply().Int32(0).Int32(1).Map(TEXT("other"), 1, TEXT("b"), TEXT("c")).Int32(5));
    MapShopSearch* const second = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(1, LMMapShopGetNext(first, &map));
    EXPECT_EQ(TEXT("Malta"), WideString(map.text1));
    EXPECT_EQ(1, LMMapShopGetNext(second, &map));
    EXPECT_EQ(TEXT("other"), WideString(map.text1));
    EXPECT_EQ(5, LMMapShopClose(second));
    EXPECT_EQ(1, LMMapShopGetNext(first, &map));
    EXPECT_EQ(24, LMMapShopClose(first));
}

TEST_F(MapShop, WithoutMemoryForTheHandleTheResultIsNullAndNothingIsSent) {
    Answer(TwoMaps());
    AllocationWatch watch(1);
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    watch.Stop();
    EXPECT_EQ(nullptr, search);
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(MapShop, WhereverMemoryRunsOutTheResultsAlreadyReadAreKept) {
    Answer(TwoMaps());
    size_t mapsBefore = 0;
    for (size_t n = 2;; ++n) {
        SCOPED_TRACE(n);
        AllocationWatch watch(n, Failing::FromThereOn);
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        watch.Stop();
        ASSERT_NE(nullptr, search);
        const Outcome outcome = Take(search);
        EXPECT_GE(outcome.maps.size(), mapsBefore) << "a later failure leaves no fewer results";
        EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
        mapsBefore = outcome.maps.size();
        if (!watch.Failed()) break;
        EXPECT_EQ(0, outcome.finalValue);
        ASSERT_LT(n, 200u);
    }
    EXPECT_EQ(2u, mapsBefore);
}

TEST_F(MapShop, NoBoxIsEverShown) {
    ExpectNothingFound();
    Answer(MapShopReply().Int32(9));
    ExpectNothingFound();
    EXPECT_EQ(0u, device.CountCalls("MessageBoxW"));
}
