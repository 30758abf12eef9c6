/* How a CGI request is made and sent. */
#include "transport/BufferSizes.h"
#include "transport/CgiFixture.h"

using namespace std::string_view_literals;

TEST_F(Cgi, StartsWritingGoodAndEmpty) {
    const CgiRequest request(host, path, false, false);
    EXPECT_EQ(ByteStream::writing, request.mode);
    EXPECT_TRUE(request.good);
    EXPECT_TRUE(request.wideStrings);
    EXPECT_EQ(0u, request.byteCount);
}

TEST_F(Cgi, CallsOfOnePlainRequestFromConstructionToDestruction) {
    Answer("\0\0\0\0"sv);
    {
        CgiRequest request(host, path, true, false);
        request.WriteInt32(101);
        request.WriteInt32(0);
        EXPECT_TRUE(request.SendRequest());
        int32_t status = -1;
        request.ReadInt32(status);
        EXPECT_EQ(0, status);
    }
    const std::vector<std::string> expected = {
        R"(ConnMgrMapURL("http://www.orvande.example/", 0) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000) = "
        "0x00000000, link 1, status 0x10",
        R"(InternetOpenW("ZR_CgiClient-SP", 0, null, null, 0x00000000) = session 1)",
        R"(InternetConnectW(session 1, "host.example", 80, null, null, 3, 0x00000000, 0) = connection 1)",
        R"(HttpOpenRequestW(connection 1, "POST", "cgi-bin/program.cgi", null, null, null, 0x00080100, 0) = )"
        "request 1",
        "LoadCursorW(null, IDC_WAIT) = wait cursor",
        "SetCursor(wait cursor) = normal cursor",
        "HttpSendRequestW(request 1, null, 0, body, 8) = TRUE",
        "SetCursor(normal cursor) = wait cursor",
        "InternetReadFile(request 1, " + std::to_string(receiveBufferSize) + ") = TRUE, 4",
        "InternetCloseHandle(request 1) = TRUE",
        "InternetCloseHandle(connection 1) = TRUE",
        "InternetCloseHandle(session 1) = TRUE",
        "ConnMgrReleaseConnection(link 1, 0) = 0x00000000",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(Cgi, SecureRequestGoesToPort443WithTheSecureFlag) {
    Answer(WebReply::WithBody("ok"), 443);
    CgiRequest request(host, path, false, true);
    EXPECT_TRUE(WithCode(request).SendRequest());
    ASSERT_EQ(1u, device.Requests().size());
    EXPECT_EQ(443, device.Requests()[0].port);
    EXPECT_EQ(0x00880100u, device.Requests()[0].flags);
    EXPECT_TRUE(device.Requests()[0].secure);
}

TEST_F(Cgi, PlainRequestGoesToPort80WithoutTheSecureFlag) {
    Answer("ok");
    CgiRequest request(host, path, false, false);
    EXPECT_TRUE(WithCode(request).SendRequest());
    ASSERT_EQ(1u, device.Requests().size());
    EXPECT_EQ(80, device.Requests()[0].port);
    EXPECT_EQ(0x00080100u, device.Requests()[0].flags);
    EXPECT_FALSE(device.Requests()[0].secure);
}

TEST_F(Cgi, RequestCarriesAgentVerbPathAndBodyAndNoHeaderOfItsOwn) {
    Answer("ok");
    CgiRequest request(host, path, false, false);
    request.WriteInt32(8);
    request.WriteString(TEXT("Zo\x00EB"));
    EXPECT_TRUE(request.SendRequest());
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& sent = device.Requests()[0];
    EXPECT_EQ(u"ZR_CgiClient-SP", sent.agent);
    EXPECT_EQ(DWORD{INTERNET_OPEN_TYPE_PRECONFIG}, sent.accessType);
    EXPECT_EQ(u"POST", sent.verb);
    EXPECT_EQ(u"cgi-bin/program.cgi", sent.path);
    EXPECT_EQ(u"", sent.headers);
    EXPECT_EQ("\x08\0\0\0\x03\0\0\0Z\0o\0\xEB\0"sv, sent.body);
}

TEST_F(Cgi, WithoutConnectionManagerNothingIsAskedOfIt) {
    Answer("ok");
    {
        CgiRequest request(host, path, false, false);
        WithCode(request).SendRequest();
    }
    EXPECT_EQ(0u, device.CountCalls("ConnMgrMapURL"));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(Cgi, EachRequestAsksForAConnectionThoughOneIsUp) {
    { const CgiRequest first(host, path, true, false); }
    { const CgiRequest second(host, path, true, false); }
    EXPECT_EQ(2u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(2u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(Cgi, RequestGoesAheadWithoutAManagedConnection) {
    Answer("ok");
    device.SetConnectionAnswers({.establishResult = E_FAIL});
    {
        CgiRequest request(host, path, true, false);
        EXPECT_TRUE(WithCode(request).SendRequest());
    }
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection")) << "there is none to give up";
}

TEST_F(Cgi, EarlierConnectionIsGivenUpEvenWhenTheRequestForAnotherFailed) {
    { const CgiRequest first(host, path, true, false); }
    device.SetConnectionAnswers({.establishResult = E_FAIL});
    { const CgiRequest second(host, path, true, false); }
    const std::vector<std::string> expected(2, "ConnMgrReleaseConnection(link 1, 0) = 0x00000000");
    EXPECT_EQ(expected, device.Calls({"ConnMgrReleaseConnection"}));
}

TEST_F(Cgi, RequestThatIsNeverSentIsClosed) {
    {
        CgiRequest request(host, path, false, false);
        request.WriteInt32(1);
    }
    EXPECT_EQ(3u, device.CountCalls("InternetCloseHandle"));
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(Cgi, FailureOfAnyStepOfConstructionMakesTheSendFail) {
    Answer("ok");
    for (const char* function : {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        CgiRequest request(host, path, false, false);
        EXPECT_FALSE(WithCode(request).SendRequest());
        EXPECT_TRUE(request.good) << "the stream is turned round all the same";
        int32_t value = 5;
        request.ReadInt32(value);
        EXPECT_FALSE(request.good);
        EXPECT_EQ(5, value);
    }
}

TEST_F(Cgi, UnknownHostRefusalAndTimeOutMakeTheSendFail) {
    {
        CgiRequest request(TEXT("unknown.example"), path, false, false);
        EXPECT_FALSE(WithCode(request).SendRequest());
    }
    for (const WebReply& reply : {WebReply::Refused(), WebReply::TimedOut()}) {
        Answer(reply);
        CgiRequest request(host, path, false, false);
        EXPECT_FALSE(WithCode(request).SendRequest());
    }
}

TEST_F(Cgi, SendingTurnsTheStreamRound) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    WithCode(request);
    EXPECT_EQ(4u, request.byteCount);
    request.good = false;
    request.SendRequest();
    EXPECT_EQ(ByteStream::reading, request.mode);
    EXPECT_TRUE(request.good);
    EXPECT_EQ(0u, request.byteCount);
}

TEST_F(Cgi, CursorIsRestoredAfterAFailedSend) {
    CgiRequest request(host, path, false, false);
    EXPECT_FALSE(WithCode(request).SendRequest());
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
}

TEST_F(Cgi, CursorIsRestoredWhenMemoryRunsOut) {
    Answer("ok");
    CgiRequest request(host, path, false, false);
    WithCode(request);
    AllocationWatch watch(1);
    EXPECT_THROW(request.SendRequest(), std::bad_alloc);
    watch.Stop();
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
    EXPECT_TRUE(device.Requests().empty()) << "nothing is sent whose reply has no room";
}

TEST_F(Cgi, BodyOfMoreThanAnAddressOf32BitsReachesIsRefusedBeforeItIsRead) {
    Answer("ok");
    CgiRequest request(host, path, false, false);
    WithCode(request);
    const uint8_t one = 0;
    EXPECT_THROW(request.WriteBytes(&one, INT32_MAX - 3), std::bad_alloc);
    EXPECT_TRUE(request.SendRequest());
    EXPECT_EQ(4u, device.Requests().at(0).body.size()) << "what was written before";
}

TEST_F(Cgi, MemoryIsAskedForUpToTheLastByteThatAnAddressOf32BitsReaches) {
    CgiRequest request(host, path, false, false);
    const uint8_t one = 0;
    for (const uint32_t size : {uint32_t{INT32_MAX}, uint32_t{INT32_MAX} + 1}) {
        AllocationWatch watch(1);
        EXPECT_THROW(request.WriteBytes(&one, size), std::bad_alloc);
        watch.Stop();
        EXPECT_EQ(size == INT32_MAX ? 1u : 0u, watch.Count());
    }
}

TEST_F(Cgi, RequestsMayStandSideBySide) {
    device.AddHost(host, 80, [](const WebRequest& request) { return WebReply::WithBody(request.body); });
    CgiRequest first(host, path, true, false);
    CgiRequest second(host, path, true, false);
    first.WriteInt32(1);
    second.WriteInt32(2);
    EXPECT_TRUE(second.SendRequest());
    EXPECT_TRUE(first.SendRequest());
    int32_t value = 0;
    first.ReadInt32(value);
    EXPECT_EQ(1, value);
    second.ReadInt32(value);
    EXPECT_EQ(2, value);
}
