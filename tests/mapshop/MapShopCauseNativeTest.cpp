/* What the map shop functions leave in the last error. */
#include "mapshop/MapShopFixture.h"
#include "support/Causes.h"

namespace {

class MapShopCause : public MapShop {
protected:
    static DWORD CauseOfSearch(const void* items = nullptr, int32_t count = 0) {
        MapShopSearch* search = nullptr;
        const DWORD cause = CauseOf([&] { search = LMMapShopSearch(items, count); });
        EXPECT_NE(nullptr, search);
        LMMapShopClose(search);
        return cause;
    }

    /* A page in place of the service's reply. */
    void AnswerPage(DWORD status, std::string body) {
        WebReply reply = WebReply::WithBody(std::move(body));
        reply.status = status;
        Answer(std::move(reply));
    }

    void AnswerCut(const MapShopReply& whole, WebReply::Break breaks, size_t at) {
        WebReply reply = WebReply::WithBody(whole.bytes);
        reply.breaks = breaks;
        reply.breakAt = at;
        Answer(std::move(reply));
    }
};

}  // namespace

TEST_F(MapShopCause, SearchThatReadsTheWholeAnswerLeaves0) {
    Answer(TwoMaps());
    EXPECT_EQ(0u, CauseOfSearch());
    Answer(MapShopReply().Int32(0).Int32(0).Int32(0));
    EXPECT_EQ(0u, CauseOfSearch()) << "no results are an answer";
    EXPECT_EQ(0u, CauseOfSearch("0123456789abcdef", 1));
}

TEST_F(MapShopCause, SuccessfulSearchAsksForNoHttpStatus) {
    AnswerPage(404, TwoMaps().bytes);
    EXPECT_EQ(0u, CauseOfSearch()) << "the answer counts, whatever status it has";
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}

TEST_F(MapShopCause, UnknownHostRefusalAndTimeOutAreWinInetsCodes) {
    EXPECT_EQ(12007u, CauseOfSearch());
    Answer(WebReply::Refused());
    EXPECT_EQ(12029u, CauseOfSearch());
    Answer(WebReply::TimedOut());
    EXPECT_EQ(12002u, CauseOfSearch());
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW")) << "there is no reply to ask for its status";
}

TEST_F(MapShopCause, HandleThatCouldNotBeOpenedIsTheCauseNotTheCallsThatNeedIt) {
    Answer(TwoMaps());
    for (const char* function :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_INTERNET_OUT_OF_HANDLES);
        EXPECT_EQ(12001u, CauseOfSearch());
    }
}

TEST_F(MapShopCause, FailedCallWithoutACodeIsAGeneralFailure) {
    Answer(TwoMaps());
    device.FailCall("HttpSendRequestW", 1, 0);
    MapShopSearch* search = nullptr;
    SetLastError(0);
    search = LMMapShopSearch(nullptr, 0);
    EXPECT_EQ(31u, GetLastError());
    LMMapShopClose(search);
}

TEST_F(MapShopCause, ConnectionManagersFailureIsNone) {
    Answer(TwoMaps());
    for (const char* function : {"ConnMgrMapURL", "ConnMgrEstablishConnectionSync"}) {
        device.FailCall(function, 1, ERROR_GEN_FAILURE);
        EXPECT_EQ(0u, CauseOfSearch()) << "the request went ahead and was answered";
    }
    device.FailCall("ConnMgrMapURL", 1, ERROR_GEN_FAILURE);
    Answer(WebReply::Refused());
    EXPECT_EQ(12029u, CauseOfSearch()) << "what the request met counts";
}

TEST_F(MapShopCause, StatusOfTheServiceIsTold) {
    const struct {
        int64_t status;
        DWORD cause;
    } cases[] = {{1, 0x22000001},          {9, 0x22000009},  {0xABCDEF, 0x22ABCDEF},
                 {0x12345678, 0x22345678}, {-1, 0x22FFFFFF}, {INT32_MIN, 0x22000000}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.status);
        Answer(MapShopReply().Int32(c.status).Int32(0).Int32(0));
        EXPECT_EQ(c.cause, CauseOfSearch());
        EXPECT_EQ(DWORD{LM_ERROR_SERVICE_STATUS}, LM_ERROR_KIND(c.cause));
        EXPECT_EQ(static_cast<DWORD>(c.status) & 0xFFFFFF, LM_ERROR_STATUS(c.cause));
    }
}

TEST_F(MapShopCause, PageInPlaceOfAReplyIsTheServersRefusal) {
    for (const DWORD status : {300u, 302u, 401u, 403u, 404u, 407u, 500u, 502u, 999u, 1000u, 1001u}) {
        for (const char* page : {"<html>", "<h", ""}) {
            SCOPED_TRACE(testing::Message() << status << page);
            AnswerPage(status, page);
            EXPECT_EQ(HttpRefusal(status), CauseOfSearch());
        }
    }
}

TEST_F(MapShopCause, RefusalThatBeginsAsAnAnswerIsOneAllTheSame) {
    WebReply reply = WebReply::WithStatus(500);
    reply.body = std::string(4, '\0');
    Answer(std::move(reply));
    EXPECT_EQ(HttpRefusal(500), CauseOfSearch());
}

TEST_F(MapShopCause, PageOfAGoodStatusIsWhatItsFirstBytesAre) {
    for (const DWORD status : {200u, 299u}) {
        AnswerPage(status, "<html>");
        EXPECT_EQ(ServiceAnswer(0x74683C), CauseOfSearch());
    }
}

TEST_F(MapShopCause, HttpStatusThatCannotBeHadLeavesWhatTheReplyTold) {
    Answer(MapShopReply().Int32(9));
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(ServiceAnswer(9), CauseOfSearch());
    Answer(WebReply::WithBody(""));
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfSearch());
}

TEST_F(MapShopCause, ReplyThatEndsAtAnyByteHasEnded) {
    const MapShopReply whole = TwoMaps();
    for (size_t cut = 0; cut < whole.bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        AnswerCut(whole, WebReply::Break::Close, cut);
        EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfSearch());
    }
}

TEST_F(MapShopCause, ReplyThatIsResetAtAnyByteHasTheCodeOfTheFailedRead) {
    const MapShopReply whole = TwoMaps();
    for (size_t cut = 0; cut < whole.bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        AnswerCut(whole, WebReply::Break::Reset, cut);
        EXPECT_EQ(10054u, CauseOfSearch());
    }
}

TEST_F(MapShopCause, NoReplyAtAllHasEnded) {
    Answer(WebReply::Nothing());
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfSearch());
}

TEST_F(MapShopCause, ReadThatFailsAfterTheLastByteOfTheAnswerDoesNoHarm) {
    // The failed read brings the bytes that were missing, so that nothing is.
    WebReply reply = WebReply::WithBody(TwoMaps().bytes + "x");
    reply.breaks = WebReply::Break::Reset;
    reply.breakAt = reply.body.size() - 1;
    Answer(std::move(reply));
    EXPECT_EQ(0u, CauseOfSearch());
}

TEST_F(MapShopCause, ReadThatFailedOnceIsTheCauseAlthoughTheNextOnesBringBytes) {
    WebReply reply = WebReply::WithBody(TwoMaps().bytes);
    reply.chunks = {8, 1000};
    Answer(reply);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    EXPECT_EQ(12002u, CauseOfSearch());
}

TEST_F(MapShopCause, FirstOfTwoFailedReadsCounts) {
    Answer(TwoMaps());
    device.FailCall("InternetReadFile", 1, ERROR_INTERNET_TIMEOUT);
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_CONNECTION_RESET);
    EXPECT_EQ(12002u, CauseOfSearch());
}

TEST_F(MapShopCause, CountThatPromisesMoreThanComesHasEnded) {
    Answer(MapShopReply().Int32(0).Int32(INT32_MAX).Map(TEXT("a"), 1, TEXT("b"), TEXT("c")));
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfSearch());
}

TEST_F(MapShopCause, TextOfALengthThatNoTextHasIsInvalidData) {
    for (const int64_t length : {-1, INT32_MIN, 100001, INT32_MAX}) {
        for (int field = 0; field < 3; ++field) {
            SCOPED_TRACE(testing::Message() << length << " in field " << field);
            MapShopReply reply = MapShopReply().Int32(0).Int32(1).Int32(4);
            for (int i = 0; i < 3; ++i) {
                field == i ? reply.Int32(length) : reply.Text(TEXT("abc"));
                if (i == 0) reply.Int32(1200);
            }
            Answer(reply.Int32(24));
            EXPECT_EQ(13u, CauseOfSearch());
            const Outcome outcome = Search();
            EXPECT_EQ(1u, outcome.maps.size()) << "kept as before";
            EXPECT_EQ(24, outcome.finalValue);
        }
    }
    Answer(MapShopReply().Int32(0).Int32(1).Int32(4).Int32(-1));
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfSearch()) << "what a call met counts more";
}

TEST_F(MapShopCause, PartialSearchHasItsResultsAndTheCause) {
    const MapShopReply whole = TwoMaps();
    AnswerCut(whole, WebReply::Break::Reset, whole.bytes.size() - 10);
    MapShopSearch* search = nullptr;
    EXPECT_EQ(10054u, CauseOf([&] { search = LMMapShopSearch(nullptr, 0); }));
    EXPECT_EQ(1u, Take(search).maps.size());
}

TEST_F(MapShopCause, BadItemsAreABadArgument) {
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfSearch(nullptr, 1));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfSearch("0123456789abcdef", -1));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfSearch("0123456789abcdef", 0x10000000));
}

TEST_F(MapShopCause, WithoutMemoryForTheHandleItIs8) {
    Answer(TwoMaps());
    SetLastError(staleError);
    AllocationWatch watch(1);
    EXPECT_EQ(nullptr, LMMapShopSearch(nullptr, 0));
    watch.Stop();
    EXPECT_EQ(8u, GetLastError());
}

TEST_F(MapShopCause, HandleThatCouldNotBeOpenedCountsMoreThanMemoryThatRanOutAfterwards) {
    Answer(TwoMaps());
    device.FailCall("InternetOpenW", 1, ERROR_INTERNET_OUT_OF_HANDLES);
    SetLastError(staleError);
    AllocationWatch watch(2, Failing::FromThereOn);
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    const DWORD cause = GetLastError();
    watch.Stop();
    LMMapShopClose(search);
    EXPECT_TRUE(watch.Failed());
    EXPECT_EQ(12001u, cause);
}

TEST_F(MapShopCause, SurvivesTheClosing) {
    for (const char* function : {"InternetCloseHandle", "ConnMgrReleaseConnection", "SetCursor"}) {
        SCOPED_TRACE(function);
        Answer(WebReply::Refused());
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        EXPECT_EQ(12029u, CauseOfSearch());
        Answer(TwoMaps());
        EXPECT_EQ(0u, CauseOfSearch());
        device.StopFailing();
    }
}

TEST_F(MapShopCause, GettingAResultLeaves0AndTheEnd259) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    const auto next = [&] { LMMapShopGetNext(search, &map); };
    EXPECT_EQ(0u, CauseOf(next));
    EXPECT_EQ(0u, CauseOf(next));
    EXPECT_EQ(259u, CauseOf(next));
    EXPECT_EQ(259u, CauseOf(next));
    EXPECT_EQ(0u, CauseOf([&] { LMMapShopClose(search); }));
}

TEST_F(MapShopCause, GettingFromOrIntoNullIsABadArgument) {
    Answer(TwoMaps());
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOf([&] { LMMapShopGetNext(nullptr, &map); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOf([&] { LMMapShopGetNext(search, nullptr); }));
    LMMapShopClose(search);
}

TEST_F(MapShopCause, ClosingLeaves0WhateverTheSearchMetAndNullIsABadArgument) {
    MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
    EXPECT_EQ(0u, CauseOf([&] { LMMapShopClose(search); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOf([] { LMMapShopClose(nullptr); }));
}
