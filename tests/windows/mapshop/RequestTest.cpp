/* What a search puts on the wire, byte by byte. */
#include "mapshop/ShopTest.h"

// Builds on the platform's headers as the above includes them.
#include "StandInControl.h"

using namespace std::string_literals;

namespace {

class Request : public ShopTest {
protected:
    /* The only request since the last call. */
    CapturedRequest Only() {
        const std::vector<CapturedRequest> requests = server.TakeRequests();
        EXPECT_EQ(1U, requests.size());
        return requests.empty() ? CapturedRequest{} : requests.front();
    }

    CapturedRequest RequestOf(const std::string& items) {
        library.Search(items.data(), static_cast<int32_t>(items.size() / 16));
        return Only();
    }

    /* `count` items, every byte of which differs from its neighbours. */
    static std::string Items(size_t count) {
        std::string items;
        for (size_t i = 0; i < count * 16; ++i)
            items += static_cast<char>(i * 7 + 3);
        return items;
    }
};

}  // namespace

TEST_F(Request, GoesToTheMapStoreOfTheServicesHostByPost) {
    library.Search();
    const CapturedRequest request = Only();
    EXPECT_EQ("POST http://online.orvande.example:80/cgi-bin/mapstore.cgi HTTP/1.1", request.line);
    EXPECT_EQ("online.orvande.example", request.Header("Host"));
}

TEST_F(Request, HeadersNameTheClientAndForbidCaches) {
    library.Search();
    const CapturedRequest request = Only();
    EXPECT_EQ("ZR_CgiClient-SP", request.Header("User-Agent"));
    EXPECT_EQ("no-cache", request.Header("Pragma"));
    EXPECT_EQ("8", request.Header("Content-Length"));
}

TEST_F(Request, NoHeadersAreAddedByTheLibrary) {
    library.Search();
    const CapturedRequest request = Only();
    for (const char* name : {"Content-Type", "Accept", "Referer", "Cookie", "Range", "Authorization"}) {
        EXPECT_EQ("none", request.Header(name)) << name;
    }
}

TEST_F(Request, BodyWithoutItemsIsTheRequestCodeAndACountOf0) {
    EXPECT_EQ("\x65\0\0\0\0\0\0\0"s, RequestOf("").body);
}

TEST_F(Request, NullItemsWithACountOf0AreANormalSearch) {
    library.Search(nullptr, 0);
    EXPECT_EQ("\x65\0\0\0\0\0\0\0"s, Only().body);
}

TEST_F(Request, ItemsFollowTheCountUnchanged) {
    const std::string items = Items(3);
    const CapturedRequest request = RequestOf(items);
    EXPECT_EQ("\x65\0\0\0\3\0\0\0"s + items, request.body);
    EXPECT_EQ("56", request.Header("Content-Length"));
}

TEST_F(Request, BodyLargerThanTheLeastBufferIsSentWhole) {
    const std::string items = Items(20);
    EXPECT_EQ("\x65\0\0\0\x14\0\0\0"s + items, RequestOf(items).body);
}

TEST_F(Request, BodyOf160008BytesIsSentWhole) {
    const std::string items = Items(10000);
    EXPECT_EQ("\x65\0\0\0\x10\x27\0\0"s + items, RequestOf(items).body);
}

TEST_F(Request, EverySearchIsOneRequestAndAllAreAlike) {
    for (int i = 0; i < 3; ++i)
        library.Search();
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(3U, requests.size());
    for (const CapturedRequest& request : requests) {
        EXPECT_EQ(requests[0].line, request.line);
        EXPECT_EQ(requests[0].headers, request.headers);
        EXPECT_EQ(requests[0].body, request.body);
    }
}

TEST_F(Request, CookieOfTheServiceIsNotSentBack) {
    server.Answer(
        ConnectionScript{"HTTP/1.1 200 OK\r\nSet-Cookie: visitor=1; path=/\r\nContent-Length: 0\r\n"
                         "Connection: close\r\n\r\n"});
    library.Search();
    library.Search();
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ("none", requests[1].Header("Cookie"));
}

TEST_F(Request, NothingIsSentForItemsThatCannotBe) {
    const char item[16] = {};
    const struct {
        const char* name;
        const void* items;
        int32_t count;
    } cases[] = {
        {"count of -1", item, -1},
        {"least count", item, INT32_MIN},
        {"no items", nullptr, 1},
        {"no items and the greatest count", nullptr, INT32_MAX},
        {"more items than memory has room for", item, 268435456},
    };
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.name);
        ExpectNothing(library.Search(bad.items, bad.count));
    }
    EXPECT_EQ(0U, server.TakeRequests().size());
}

TEST_F(Request, AConnectionIsAskedForOnceAndGivenUp) {
    StandInAnswer(S_OK, S_OK, CONNMGR_STATUS_CONNECTED);
    library.Search();
    StandInCallRecord calls;
    StandInCalls(&calls);
    EXPECT_EQ(1, calls.mapped);
    EXPECT_STREQ(L"http://www.orvande.example/", calls.url);
    EXPECT_EQ(1, calls.established);
    EXPECT_EQ(64U, calls.connection.cbSize);
    EXPECT_EQ(DWORD{CONNMGR_PARAM_GUIDDESTNET}, calls.connection.dwParams);
    EXPECT_EQ(DWORD{CONNMGR_PRIORITY_USERINTERACTIVE}, calls.connection.dwPriority);
    EXPECT_EQ(30000U, calls.timeout);
    EXPECT_EQ(1, calls.released);
    EXPECT_EQ(0, calls.releasedCache);
}

TEST_F(Request, GoesAheadWhateverTheConnectionManagerAnswers) {
    const struct {
        const char* name;
        HRESULT mapping;
        HRESULT establishing;
        DWORD status;
    } cases[] = {
        {"no network for the address", E_FAIL, S_OK, CONNMGR_STATUS_CONNECTED},
        {"no connection", S_OK, E_FAIL, CONNMGR_STATUS_CONNECTED},
        {"connecting failed", S_OK, S_OK, 0x20},
    };
    Reply(MapShopReply().Int32(0).Int32(0).Int32(7));
    for (const auto& answer : cases) {
        SCOPED_TRACE(answer.name);
        StandInAnswer(answer.mapping, answer.establishing, answer.status);
        EXPECT_EQ(7, library.Search().finalValue);
    }
    StandInAnswer(S_OK, S_OK, CONNMGR_STATUS_CONNECTED);
}
