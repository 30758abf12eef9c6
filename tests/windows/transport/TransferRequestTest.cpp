/* What downloads and ranged reads put on the wire, byte by byte. */
#include "transport/TransferTest.h"

#include <gmock/gmock.h>

#include "helpers/LocalFiles.h"

// Builds on the platform's headers as the above includes them.
#include "StandInControl.h"

namespace {

class TransferRequest : public TransferTest {
protected:
    /* The only request since the last call. */
    CapturedRequest Only() {
        const std::vector<CapturedRequest> requests = server.TakeRequests();
        EXPECT_EQ(1U, requests.size());
        return requests.empty() ? CapturedRequest{} : requests.front();
    }

    CapturedRequest RequestOfDownload() {
        Download();
        return Only();
    }

    CapturedRequest RequestOfRange(int64_t offset, int32_t length) {
        char buffer[16];
        library.readRange(host, urlPath, offset, length, buffer, nullptr, nullptr);
        return Only();
    }

    static constexpr const char* requestLine = "GET http://maps.example:80/maps/file.map HTTP/1.1";
};

}  // namespace

TEST_F(TransferRequest, OfADownloadAsksForTheWholeFilePastAllCaches) {
    const CapturedRequest request = RequestOfDownload();
    EXPECT_EQ(requestLine, request.line);
    EXPECT_THAT(request.headers, testing::UnorderedElementsAre("Host: maps.example", "User-Agent: Orvande-SP",
                                                               "Pragma: no-cache"));
    EXPECT_EQ("", request.body);
}

TEST_F(TransferRequest, OfARangedReadAsksForItsBytes) {
    const CapturedRequest request = RequestOfRange(0, 10);
    EXPECT_EQ(requestLine, request.line);
    EXPECT_THAT(request.headers, testing::UnorderedElementsAre("Host: maps.example", "User-Agent: Orvande-SP",
                                                               "Pragma: no-cache", "Range: bytes=0-9"));
    EXPECT_EQ("", request.body);
}

TEST_F(TransferRequest, RangeOfOffsetsAndLengths) {
    const struct {
        int64_t offset;
        int32_t length;
        const char* range;
    } cases[] = {
        {0, 1, "bytes=0-0"},
        {100, 10, "bytes=100-109"},
        {4294967295, 1, "bytes=4294967295-4294967295"},
        {4294967296, 10, "bytes=4294967296-4294967305"},
        {4294967296, INT32_MAX, "bytes=4294967296-6442450942"},
        {5, 0, "bytes=5-4"},
        {0, 0, "bytes=0--1"},
        {5, -3, "bytes=5-1"},
        {0, INT32_MIN, "bytes=0--2147483649"},
        {-1, 1, "bytes=-1--1"},
        {INT64_MAX, 1, "bytes=9223372036854775807-9223372036854775807"},
        {INT64_MAX, 2, "bytes=9223372036854775807--9223372036854775808"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.range);
        EXPECT_EQ(c.range, RequestOfRange(c.offset, c.length).Header("Range"));
    }
}

TEST_F(TransferRequest, EveryTransferIsOneRequestAndNoneIsAnsweredFromACache) {
    AnswerRaw(Head("200 OK",
                   "Cache-Control: max-age=3600\r\nLast-Modified: Thu, 01 Jan 2004 00:00:00 GMT\r\nETag: "
                   "\"1\"\r\n" +
                       LengthField(3)) +
              "old");
    EXPECT_EQ(1, Download());
    char buffer[3];
    EXPECT_EQ(3, library.readRange(host, urlPath, 0, 3, buffer, nullptr, nullptr));
    server.Answer("new");
    EXPECT_EQ(1, Download());
    EXPECT_EQ("new", ContentOf(target));
    EXPECT_EQ(3, library.readRange(host, urlPath, 0, 3, buffer, nullptr, nullptr));
    EXPECT_EQ("new", std::string(buffer, 3));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(4U, requests.size());
    EXPECT_EQ(requests[0].headers, requests[2].headers);
    EXPECT_EQ(requests[1].headers, requests[3].headers);
}

TEST_F(TransferRequest, CookieOfAServerIsNotSentBack) {
    AnswerRaw(Head("200 OK", "Set-Cookie: visitor=1; path=/\r\n" + LengthField(3)) + "abc");
    RequestOfDownload();
    RequestOfRange(0, 3);
    EXPECT_EQ("none", RequestOfDownload().Header("Cookie"));
    EXPECT_EQ("none", RequestOfRange(0, 3).Header("Cookie"));
}

TEST_F(TransferRequest, NothingIsSentAndNothingTouchedForBadArguments) {
    PutFile(target, "old");
    char buffer[] = "....";
    const WCHAR* const file = target.c_str();
    EXPECT_EQ(0, library.downloadWithProgress(nullptr, urlPath, file, Callback, this, &progress));
    EXPECT_EQ(0, library.downloadWithProgress(host, nullptr, file, Callback, this, &progress));
    EXPECT_EQ(0, library.downloadWithProgress(host, urlPath, nullptr, Callback, this, &progress));
    EXPECT_EQ(0, library.downloadWithProgress(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(0, library.download(nullptr, urlPath, file, Callback, this));
    EXPECT_EQ(0, library.download(host, nullptr, file, Callback, this));
    EXPECT_EQ(0, library.download(host, urlPath, nullptr, Callback, this));
    EXPECT_EQ(-1, library.readRange(nullptr, urlPath, 0, 4, buffer, Callback, this));
    EXPECT_EQ(-1, library.readRange(host, nullptr, 0, 4, buffer, Callback, this));
    EXPECT_EQ(-1, library.readRange(host, urlPath, 0, 4, nullptr, Callback, this));
    EXPECT_EQ(-1, library.readRange(host, urlPath, 0, 0, nullptr, Callback, this));
    EXPECT_EQ(0U, server.TakeRequests().size());
    EXPECT_STREQ("....", buffer);
    ExpectOldFileUntouched();
}

TEST_F(TransferRequest, AConnectionIsAskedForOnceByEachTransferAndKept) {
    char buffer[4];
    const std::function<void()> transfers[] = {
        [&] { Download(); },
        [&] { library.readRange(host, urlPath, 0, 4, buffer, nullptr, nullptr); },
    };
    for (const auto& transfer : transfers) {
        StandInAnswer(S_OK, S_OK, CONNMGR_STATUS_CONNECTED);
        transfer();
        StandInCallRecord calls;
        StandInCalls(&calls);
        EXPECT_EQ(1, calls.mapped);
        EXPECT_STREQ(L"http://www.orvande.example/", calls.url);
        EXPECT_EQ(1, calls.established);
        EXPECT_EQ(64U, calls.connection.cbSize);
        EXPECT_EQ(DWORD{CONNMGR_PARAM_GUIDDESTNET}, calls.connection.dwParams);
        EXPECT_EQ(DWORD{CONNMGR_PRIORITY_USERINTERACTIVE}, calls.connection.dwPriority);
        EXPECT_EQ(30000U, calls.timeout);
        EXPECT_EQ(0, calls.released);
    }
}

TEST_F(TransferRequest, GoesAheadWhateverTheConnectionManagerAnswers) {
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
    server.Answer("abc");
    for (const auto& answer : cases) {
        SCOPED_TRACE(answer.name);
        StandInAnswer(answer.mapping, answer.establishing, answer.status);
        ExpectDownloadOf("abc", 3);
        char buffer[3];
        EXPECT_EQ(3, library.readRange(host, urlPath, 0, 3, buffer, nullptr, nullptr));
    }
    StandInAnswer(S_OK, S_OK, CONNMGR_STATUS_CONNECTED);
}
