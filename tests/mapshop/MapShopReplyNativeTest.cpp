/* What becomes of replies that are too long, too short, or not to be believed. */
#include "mapshop/MapShopFixture.h"

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

TEST_F(MapShop, HalfAStatusOfZerosIsNoSuccessThoughAMapFollows) {
    MapShopReply reply;
    reply.bytes = {0, 0};
    WebReply late = WebReply::WithBody(reply.Int32(1).Map(TEXT("a"), 1, TEXT("b"), TEXT("c")).Int32(5).bytes);
    late.chunks = {2, 1000};
    Answer(late);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    ExpectNothingFound();
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

TEST_F(MapShop, ReplyMayGoOnAfter999EntriesWithoutAByteButNotAfter1000) {
    const struct {
        size_t empty;
        int32_t finalValue;
    } cases[] = {{999, 44}, {1000, 41}, {1001, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.empty);
        WebReply reply = WebReply::WithBody(
            MapShopReply().Int32(0).Int32(1002).Int32(41).Int32(42).Int32(43).Int32(44).bytes);
        reply.chunks = {8, 1000};
        Answer(reply);
        for (size_t n = 0; n < c.empty; ++n)
            device.FailCall("InternetReadFile", 2 + n, ERROR_INTERNET_TIMEOUT);
        EXPECT_EQ(c.finalValue, Search().finalValue);
        device.StopFailing();
    }
}

TEST_F(MapShop, EntriesWithoutAByteCountOnlyInARow) {
    WebReply reply =
        WebReply::WithBody(MapShopReply().Int32(0).Int32(2000).Int32(41).Int32(42).Int32(43).bytes);
    reply.chunks = {8, 4, 1000};
    Answer(reply);
    for (size_t n = 0; n < 999; ++n) {
        device.FailCall("InternetReadFile", 2 + n, ERROR_INTERNET_TIMEOUT);
        device.FailCall("InternetReadFile", 2 + 1000 + n, ERROR_INTERNET_TIMEOUT);
    }
    // 999 without a byte, 41, 999 without a byte, 42: these are the entries.
    EXPECT_EQ(43, Search().finalValue);
}

TEST_F(MapShop, CountThatCannotBeReadIsNoneAndTheNextBytesAreTheFinalValue) {
    WebReply reply = WebReply::WithBody(MapShopReply().Int32(0).Int32(24).Int32(25).bytes);
    reply.chunks = {4, 1000};
    Answer(reply);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    EXPECT_EQ(24, Search().finalValue);
}

TEST_F(MapShop, EntriesAfterAFailedReadAreStillRead) {
    // The type of the first entry does not come; that of the second does, and the final value follows it.
    WebReply reply = WebReply::WithBody(MapShopReply().Int32(0).Int32(2).Int32(3).Int32(24).bytes);
    reply.chunks = {8, 1000};
    Answer(reply);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    EXPECT_EQ(24, Search().finalValue);
}

TEST_F(MapShop, MapsAfterAFailedReadAreNotKept) {
    WebReply reply = WebReply::WithBody(TwoMaps().bytes);
    reply.chunks = {8, 1000};
    Answer(reply);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    EXPECT_EQ(0u, Search().maps.size());
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

TEST_F(MapShop, NothingIsReadOfARequestThatWasNotSent) {
    Answer(WebReply::Refused());
    ExpectNothingFound();
    EXPECT_EQ(0u, device.CountCalls("InternetReadFile"));
}

TEST_F(MapShop, FailureOfAnySingleCallIsEitherOfNoConsequenceOrLeavesNoResults) {
    const struct {
        const char* function;
        size_t maps;
        int32_t finalValue;
    } cases[] = {
        {"ConnMgrMapURL", 2, 24},       {"ConnMgrEstablishConnectionSync", 2, 24},
        {"LoadCursorW", 2, 24},         {"SetCursor", 2, 24},
        {"InternetCloseHandle", 2, 24}, {"ConnMgrReleaseConnection", 2, 24},
        {"InternetOpenW", 0, 0},        {"InternetConnectW", 0, 0},
        {"HttpOpenRequestW", 0, 0},     {"HttpSendRequestW", 0, 0},
        {"InternetReadFile", 0, 0},
    };
    Answer(TwoMaps());
    for (const auto& c : cases) {
        SCOPED_TRACE(c.function);
        device.FailCall(c.function, 1, ERROR_GEN_FAILURE);
        const Outcome outcome = Search();
        EXPECT_EQ(c.maps, outcome.maps.size());
        EXPECT_EQ(c.finalValue, outcome.finalValue);
    }
    EXPECT_EQ(std::size(cases), device.FailedCalls());
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
