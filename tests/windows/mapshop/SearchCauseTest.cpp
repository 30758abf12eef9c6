/* What searches leave in the last error, with Windows' own WinINet. */
#include "Platform.h"

#include "helpers/ClosedPort.h"
#include "mapshop/ShopTest.h"
#include "support/Causes.h"

namespace {

DWORD CauseOfSearch(const ShippedLibrary& library, const void* items = nullptr, int32_t count = 0) {
    MapShopSearch* search = nullptr;
    const DWORD cause = CauseOf([&] { search = library.mapShopSearch(items, count); });
    EXPECT_NE(nullptr, search);
    EXPECT_EQ(0U, CauseOf([&] { library.mapShopClose(search); }));
    return cause;
}

class SearchCause : public ShopTest {
protected:
    DWORD CauseOfAnswer(std::string bytes) {
        server.Answer(ConnectionScript{std::move(bytes)});
        return CauseOfSearch(library);
    }

    static std::string Page(const std::string& status, const std::string& body) {
        return "HTTP/1.1 " + status +
               "\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    }

    const MapShopReply oneMap = MapShopReply().Int32(0).Int32(1).Map(L"a", 1, L"b", L"c").Int32(7);
};

}  // namespace

TEST_F(SearchCause, WholeAnswerLeaves0) {
    Reply(oneMap);
    EXPECT_EQ(0U, CauseOfSearch(library));
    EXPECT_EQ(0U, CauseOfSearch(library, "0123456789abcdef", 1));
}

TEST_F(SearchCause, ResultsLeave0AndTheirEnd259) {
    Reply(oneMap);
    MapShopSearch* const search = library.mapShopSearch(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(0U, CauseOf([&] { library.mapShopGetNext(search, &map); }));
    EXPECT_EQ(259U, CauseOf([&] { library.mapShopGetNext(search, &map); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOf([&] { library.mapShopGetNext(search, nullptr); }));
    library.mapShopClose(search);
}

TEST_F(SearchCause, AnswerCutAtAnyByteHasEndedAndKeepsItsResults) {
    for (size_t size = 0; size < oneMap.bytes.size(); ++size) {
        SCOPED_TRACE(size);
        EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED},
                  CauseOfAnswer("HTTP/1.0 200 OK\r\n\r\n" + oneMap.bytes.substr(0, size)));
    }
    server.Answer(
        ConnectionScript{"HTTP/1.0 200 OK\r\n\r\n" + oneMap.bytes.substr(0, oneMap.bytes.size() - 4)});
    EXPECT_EQ(1U, library.Search().results.size());
}

TEST_F(SearchCause, ConnectionThatEndsWithoutAnAnswerHasEnded) {
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfAnswer(""));
}

TEST_F(SearchCause, RefusalsAreToldWithTheirHttpStatus) {
    EXPECT_EQ(HttpRefusal(404), CauseOfAnswer(Page("404 Not Found", "<html>no such program</html>")));
    EXPECT_EQ(HttpRefusal(407), CauseOfAnswer(Page("407 Proxy Authentication Required", "")));
    EXPECT_EQ(HttpRefusal(502), CauseOfAnswer(Page("502 Bad Gateway", "<")));
    EXPECT_EQ(0U, CauseOfAnswer(Page("500 Internal Server Error", oneMap.bytes)))
        << "the answer is whole, whatever stands above it";
}

TEST_F(SearchCause, StatusOfTheServiceIsTold) {
    Reply(MapShopReply().Int32(9));
    EXPECT_EQ(ServiceAnswer(9), CauseOfSearch(library));
}

TEST_F(SearchCause, BadItemsAreABadArgument) {
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfSearch(library, nullptr, 1));
    EXPECT_EQ(0U, server.TakeRequests().size());
}

TEST(UnreachableSearchCause, UnknownHostIs12007) {
    EXPECT_EQ(12007U, CauseOfSearch(ShippedLibrary()));
}

TEST(UnreachableSearchCause, ClosedPortIs12029) {
    const ClosedPort closed;
    const WebProxy nobody(closed.Number());
    EXPECT_EQ(12029U, CauseOfSearch(ShippedLibrary()));
}
