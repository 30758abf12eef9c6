#include "network/NetworkWeb.h"

#include "SimulatorTest.h"
#include "network/LoopbackServer.h"

namespace {

class NetworkWeb : public SimulatorTest {
protected:
    static constexpr char16_t host[] = u"host.example";

    void Reach(const LoopbackServer& server) { device.AddHost(host, 80, HostOnLoopback(server.Port())); }

    /* All that the reads of a sent request give. */
    static std::string BodyOf(const OpenRequest& request, DWORD most) {
        std::string body;
        std::string buffer(most, '\0');
        DWORD count = 0;
        while (InternetReadFile(request.request, buffer.data(), most, &count) && count != 0)
            body.append(buffer, 0, count);
        return body;
    }

    static DWORD StatusOf(const OpenRequest& request) {
        DWORD status = 0;
        DWORD size = sizeof status;
        HttpQueryInfoW(request.request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &size,
                       nullptr);
        return status;
    }

    static std::u16string LengthOf(const OpenRequest& request) {
        WCHAR text[20]{};
        DWORD size = sizeof text;
        HttpQueryInfoW(request.request, HTTP_QUERY_CONTENT_LENGTH, text, &size, nullptr);
        return text;
    }
};

}  // namespace

TEST_F(NetworkWeb, RequestReachesTheServerWithItsHeaders) {
    LoopbackServer server("HTTP/1.1 206 Partial Content\r\nContent-Length: 3\r\n\r\nabc");
    Reach(server);
    const OpenRequest request;
    ASSERT_TRUE(HttpSendRequestW(request.request, u"Range:bytes=0-2\n", 16, nullptr, 0));
    EXPECT_EQ(206u, StatusOf(request));
    EXPECT_EQ(u"3", LengthOf(request));
    EXPECT_EQ("abc", BodyOf(request, 100));
    const std::string& received = server.Received();
    EXPECT_EQ(0u, received.find("GET /file HTTP/1.1\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nHost: host.example\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nUser-Agent: Agent\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nRange: bytes=0-2\r\n"));
}

TEST_F(NetworkWeb, HeadersOfOneNameAllReachTheServer) {
    LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
    Reach(server);
    const OpenRequest request;
    constexpr std::u16string_view headers = u"Accept: a/b\r\nAccept: c/d\r\nUser-Agent: Other\r\n";
    ASSERT_TRUE(
        HttpSendRequestW(request.request, headers.data(), static_cast<DWORD>(headers.size()), nullptr, 0));
    const std::string& received = server.Received();
    EXPECT_NE(std::string::npos, received.find("\r\nAccept: a/b\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nAccept: c/d\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nUser-Agent: Agent\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nUser-Agent: Other\r\n"));
}

TEST_F(NetworkWeb, HeaderLineWithoutAColonIsAViolation) {
    LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
    Reach(server);
    const OpenRequest request;
    ASSERT_TRUE(HttpSendRequestW(request.request, u"Range bytes\n\n", 13, nullptr, 0));
    EXPECT_EQ(Lines{"the header line 'Range bytes' has no colon"}, TakeViolations());
    EXPECT_EQ(std::string::npos, server.Received().find("Range"));
}

TEST_F(NetworkWeb, PostedBodyArrivesWithItsLength) {
    LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", 5);
    Reach(server);
    const OpenRequest get;
    const HINTERNET post =
        HttpOpenRequestW(get.connection, u"POST", u"/cgi-bin/a.cgi", nullptr, nullptr, nullptr, 0, 0);
    char body[] = {'a', '\0', '\n', '\r', 'b'};
    EXPECT_TRUE(HttpSendRequestW(post, nullptr, 0, body, sizeof body));
    InternetCloseHandle(post);
    const std::string& received = server.Received();
    EXPECT_EQ(0u, received.find("POST /cgi-bin/a.cgi HTTP/1.1\r\n"));
    EXPECT_NE(std::string::npos, received.find("\r\nContent-Length: 5\r\n"));
    EXPECT_EQ(std::string(body, sizeof body), received.substr(received.size() - 5));
}

TEST_F(NetworkWeb, ChunkedReplyOfAnySizeIsReadInAnyPortions) {
    std::string content;
    for (int i = 0; i < 30000; ++i)
        content += std::to_string(i);
    std::string chunks;
    for (size_t begin = 0; begin < content.size(); begin += 0x1000) {
        const std::string chunk = content.substr(begin, 0x1000);
        char size[20];
        snprintf(size, sizeof size, "%zx\r\n", chunk.size());
        chunks += size + chunk + "\r\n";
    }
    for (const DWORD most : {1u, 256u, 100000u}) {
        LoopbackServer server("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks + "0\r\n\r\n");
        Reach(server);
        const OpenRequest request;
        ASSERT_TRUE(request.Send());
        EXPECT_TRUE(content == BodyOf(request, most)) << most;
        EXPECT_EQ(u"", LengthOf(request));
    }
}

TEST_F(NetworkWeb, ReplyWithoutALengthEndsWithTheConnection) {
    LoopbackServer server("HTTP/1.0 200 OK\r\n\r\nuntil the end");
    Reach(server);
    const OpenRequest request;
    ASSERT_TRUE(request.Send());
    EXPECT_EQ("until the end", BodyOf(request, 5));
}

TEST_F(NetworkWeb, ReplyThatBreaksOffEndsThere) {
    LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    Reach(server);
    const OpenRequest request;
    ASSERT_TRUE(request.Send());
    EXPECT_EQ(u"100", LengthOf(request));
    EXPECT_EQ("half", BodyOf(request, 50));
}

TEST_F(NetworkWeb, ServerThatClosesWithoutAnAnswerGivesStatus0) {
    LoopbackServer server("");
    Reach(server);
    const OpenRequest request;
    EXPECT_TRUE(request.Send());
    EXPECT_EQ(0u, StatusOf(request));
    EXPECT_EQ("", BodyOf(request, 50));
}

TEST_F(NetworkWeb, AnswerThatIsNoHttpGivesStatus0) {
    LoopbackServer server("220 smtp.example ready\r\n\r\n");
    Reach(server);
    const OpenRequest request;
    EXPECT_TRUE(request.Send());
    EXPECT_EQ(0u, StatusOf(request));
}

TEST_F(NetworkWeb, PortWhereNobodyListensIsRefused) {
    uint16_t port = 0;
    {
        const LoopbackServer server("");
        port = server.Port();
    }
    device.AddHost(host, 80, HostOnLoopback(port));
    const OpenRequest request;
    EXPECT_FALSE(request.Send());
    EXPECT_EQ(static_cast<DWORD>(ERROR_INTERNET_CANNOT_CONNECT), GetLastError());
}

TEST_F(NetworkWeb, ReplyThatIsNotReadToItsEndIsGivenUp) {
    LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n" + std::string(1000000, 'x'));
    Reach(server);
    {
        const OpenRequest request;
        ASSERT_TRUE(request.Send());
    }
    EXPECT_NE("", server.Received());
}
