/* How a connection is made, used and closed. */
#include "transport/WebFixture.h"

TEST_F(Web, StartsNotConnectedWithNothing) {
    const WebConnection connection(host, true, false);
    EXPECT_EQ(WebConnection::notConnected, connection.state);
    EXPECT_EQ(nullptr, connection.progressCallback);
    EXPECT_EQ(nullptr, connection.callbackContext);
    EXPECT_EQ(nullptr, connection.progress);
    EXPECT_EQ(nullptr, connection.ownerWindow);
    EXPECT_FALSE(connection.request);
    EXPECT_FALSE(connection.connection);
    EXPECT_FALSE(connection.holdsManagedConnection);
    EXPECT_EQ(TEXT("maps.example"), connection.host);
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(Web, ConnectsThroughTheSharedSessionAfterTheDataConnection) {
    WebConnection connection(host, true, false);
    EXPECT_TRUE(connection.Connect());
    EXPECT_EQ(WebConnection::connected, connection.state);
    EXPECT_TRUE(connection.holdsManagedConnection);
    const std::vector<std::string> expected = {
        R"(ConnMgrMapURL("http://www.orvande.example/", 0) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000) = "
        "0x00000000, link 1, status 0x10",
        R"(InternetConnectW(earlier session 1, "maps.example", 80, null, null, 3, 0x00000000, 0) = )"
        "connection 1",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(Web, SecondConnectOnAConnectedOneDoesNothing) {
    WebConnection connection(host, true, false);
    ASSERT_TRUE(connection.Connect());
    device.ForgetCalls();
    EXPECT_TRUE(connection.Connect());
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(Web, SecondConnectOnAFailedOneFailsWithoutAnyCall) {
    device.FailCall("InternetConnectW", 1, ERROR_INTERNET_INTERNAL_ERROR);
    WebConnection connection(host, true, false);
    EXPECT_FALSE(connection.Connect());
    EXPECT_EQ(WebConnection::failed, connection.state);
    device.ForgetCalls();
    EXPECT_FALSE(connection.Connect());
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(Web, GoesAheadWithoutADataConnection) {
    device.SetConnectionAnswers({.establishResult = E_FAIL});
    WebConnection connection(host, true, false);
    EXPECT_TRUE(connection.Connect());
    EXPECT_TRUE(connection.holdsManagedConnection);
}

TEST_F(Web, SecureConnectionGoesToPort443WithTheSecureFlag) {
    Answer(WebReply::WithBody("ok"), 443);
    WebConnection connection(host, false, true);
    EXPECT_TRUE(connection.OpenAndSend(TEXT("/a"), TEXT("GET"), true));
    ASSERT_EQ(1u, device.Requests().size());
    EXPECT_EQ(443, device.Requests()[0].port);
    EXPECT_EQ(0x84A80900u, device.Requests()[0].flags);
}

TEST_F(Web, PlainRequestCarriesItsFlagsAndNoHeaders) {
    Answer(WebReply::WithBody("ok"));
    WebConnection connection(host, false, false);
    EXPECT_TRUE(connection.OpenAndSend(TEXT("/a?b=c"), TEXT("GET"), false));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& sent = device.Requests()[0];
    EXPECT_EQ(u"Orvande-SP", sent.agent);
    EXPECT_EQ(u"GET", sent.verb);
    EXPECT_EQ(u"/a?b=c", sent.path);
    EXPECT_EQ(0x84280900u, sent.flags);
    EXPECT_EQ(u"", sent.headers);
    EXPECT_EQ("", sent.body);
}

TEST_F(Web, FailedConnectOpensNoRequest) {
    device.FailCall("InternetConnectW", 1, ERROR_INTERNET_INTERNAL_ERROR);
    WebConnection connection(host, false, false);
    EXPECT_FALSE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    EXPECT_EQ(0u, device.CountCalls("HttpOpenRequestW"));
}

TEST_F(Web, FailuresOfTheRequestAreReported) {
    Answer(WebReply::WithBody("ok"));
    for (const char* function : {"HttpOpenRequestW", "HttpSendRequestW"}) {
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        WebConnection connection(host, false, false);
        EXPECT_FALSE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false)) << function;
    }
}

TEST_F(Web, ContentLength) {
    const struct {
        const WCHAR* header;
        int64_t length;
    } cases[] = {
        {TEXT("0"), 0},
        {TEXT("4096"), 4096},
        {TEXT("5000000000"), 5000000000},
        {TEXT("-3"), -3},
        {TEXT("12 bytes"), 12},
        {TEXT("many"), -1},
        {TEXT(""), -1},
        {TEXT("12345678901234"), 12345678901234},
        {TEXT("123456789012345"), -1},  // 15 digits and a terminator do not fit into 30 bytes
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(WideString(c.header)));
        WebReply reply = WebReply::WithBody("");
        reply.headers = {{u"Content-Length", c.header}};
        Answer(reply);
        WebConnection connection(host, false, false);
        ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
        EXPECT_EQ(c.length, connection.GetContentLength());
    }
}

TEST_F(Web, ContentLengthOfAReplyWithoutOneIsMinus1) {
    WebReply reply = WebReply::WithBody("abc");
    reply.sendsContentLength = false;
    Answer(reply);
    WebConnection connection(host, false, false);
    ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    EXPECT_EQ(-1, connection.GetContentLength());
    EXPECT_EQ((std::vector<std::string>{"HttpQueryInfoW(request 1, 0x00000005) = FALSE, error 12150"}),
              device.Calls({"HttpQueryInfoW"}));
}

TEST_F(Web, StatusOfAReplyAndOfNone) {
    Answer(WebReply::WithStatus(404));
    WebConnection connection(host, false, false);
    EXPECT_EQ(1000u, connection.GetStatus()) << "nothing was sent";
    ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    EXPECT_EQ(404u, connection.GetStatus());
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(1000u, connection.GetStatus());
}

TEST_F(Web, CloseClosesTheRequestBeforeTheConnectionAndForgetsTheHost) {
    Answer(WebReply::WithBody("ok"));
    WebConnection connection(host, true, false);
    ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    connection.Close();
    EXPECT_EQ(WebConnection::notConnected, connection.state);
    EXPECT_EQ(TEXT(""), connection.host);
    connection.Close();
    const std::vector<std::string> expected = {"InternetCloseHandle(request 1) = TRUE",
                                               "InternetCloseHandle(connection 1) = TRUE"};
    EXPECT_EQ(expected, device.Calls({"InternetCloseHandle"}));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection")) << "the data connection stays up";
}

TEST_F(Web, DestructionClosesItToo) {
    Answer(WebReply::WithBody("ok"));
    {
        WebConnection connection(host, false, false);
        ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    }
    EXPECT_EQ(2u, device.CountCalls("InternetCloseHandle"));
}

TEST_F(Web, WithoutACallbackItMayGoOn) {
    WebConnection connection(host, false, false);
    EXPECT_TRUE(connection.MayGoOn());
}

TEST_F(Web, CallbackIsGivenItsContextAndStopsWith0) {
    WebConnection connection(host, false, false);
    int32_t answer = 0;
    connection.callbackContext = &answer;
    connection.progressCallback = [](void* context) -> int { return *static_cast<int32_t*>(context); };
    EXPECT_FALSE(connection.MayGoOn());
    for (const int32_t more : {1, -1, INT32_MIN}) {
        answer = more;
        EXPECT_TRUE(connection.MayGoOn());
    }
}
