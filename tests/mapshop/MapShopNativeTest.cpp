/* The exported map shop functions, as an application calls them. */
#include "mapshop/MapShopFixture.h"

using namespace std::string_view_literals;

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
