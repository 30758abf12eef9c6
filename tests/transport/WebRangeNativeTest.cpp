#include "transport/TransferFixture.h"

using namespace std::string_literals;

using Range = Transfer;

TEST_F(Range, FirstByteAsksForBytes0To0WithALineFeed) {
    Answer("abc");
    char buffer[1];
    EXPECT_EQ(1, xfa704a3f(host, TEXT("/f"), 0, 1, buffer, nullptr, nullptr));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& sent = device.Requests()[0];
    EXPECT_EQ(u"Range:bytes=0-0\n", sent.headers);
    EXPECT_EQ(0x04280100u, sent.flags);
    EXPECT_EQ(u"GET", sent.verb);
    EXPECT_EQ("", sent.body);
    EXPECT_EQ('a', buffer[0]);
}

TEST_F(Range, HeaderOfOffsetsAndLengths) {
    const struct {
        int64_t offset;
        int32_t length;
        const WCHAR* header;
    } cases[] = {
        {100, 10, TEXT("Range:bytes=100-109\n")},
        {0x100000000, 0x7FFFFFFF, TEXT("Range:bytes=4294967296-6442450942\n")},
        {5, 0, TEXT("Range:bytes=5-4\n")},
        {5, -3, TEXT("Range:bytes=5-1\n")},
        {0, INT32_MIN, TEXT("Range:bytes=0--2147483649\n")},
        {-1, 1, TEXT("Range:bytes=-1--1\n")},
        {INT64_MAX, 2, TEXT("Range:bytes=9223372036854775807--9223372036854775808\n")},
    };
    Answer("");
    char buffer[1];
    for (const auto& c : cases) {
        xfa704a3f(host, TEXT("/f"), c.offset, c.length, buffer, nullptr, nullptr);
        EXPECT_EQ(c.header, device.Requests().back().headers);
    }
}

TEST_F(Range, CallsOfOneRangedRead) {
    WebReply reply = WebReply::WithBody("cdef");
    reply.status = 206;
    Answer(reply);
    char buffer[4];
    EXPECT_EQ(4, xfa704a3f(host, TEXT("/f"), 2, 4, buffer, Callback, this));
    const std::vector<std::string> expected = {
        R"(InternetConnectW(earlier session 1, "maps.example", 80, null, null, 3, 0x00000000, 0) = )"
        "connection 1",
        R"(HttpOpenRequestW(connection 1, null, "/f", null, null, null, 0x04280100, 0) = request 1)",
        R"(HttpSendRequestW(request 1, "Range:bytes=2-5<U+000A>", 16, null, 0) = TRUE)",
        "HttpQueryInfoW(request 1, 0x20000013) = TRUE, 206",
        "InternetReadFile(request 1, 4) = TRUE, 4",
        "InternetCloseHandle(request 1) = TRUE",
        "InternetCloseHandle(connection 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls({"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW",
                                      "HttpQueryInfoW", "InternetReadFile", "InternetCloseHandle"}));
    EXPECT_EQ("cdef", std::string(buffer, 4));
    EXPECT_EQ(1u, callbacks);
}

TEST_F(Range, DataConnectionIsAskedForAndStaysUp) {
    Answer("abcd");
    char buffer[4];
    EXPECT_EQ(4, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(1u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(Range, LongOneIsReadInChunksAndTheRest) {
    constexpr int32_t length = 2 * chunk + 100;
    Answer(Content(5 * chunk));
    std::string buffer(length, '\0');
    EXPECT_EQ(length, xfa704a3f(host, TEXT("/f"), 0, length, buffer.data(), Callback, this));
    EXPECT_TRUE(Content(length) == buffer) << "a server without ranges gives the file's first bytes";
    const std::string size = std::to_string(chunk);
    EXPECT_EQ(
        (std::vector<std::string>{"InternetReadFile(request 1, " + size + ") = TRUE, " + size + " (2 times)",
                                  "InternetReadFile(request 1, 100) = TRUE, 100"}),
        device.Calls({"InternetReadFile"}));
    EXPECT_EQ(3u, callbacks);
}

TEST_F(Range, SmallChunksFillTheBuffer) {
    WebReply reply = WebReply::WithBody(Content(5000));
    reply.chunks = {1, 4095, 7};
    Answer(reply);
    std::string buffer(5000, '\0');
    EXPECT_EQ(5000, xfa704a3f(host, TEXT("/f"), 0, 5000, buffer.data(), nullptr, nullptr));
    EXPECT_TRUE(Content(5000) == buffer);
}

TEST_F(Range, ReplyShorterThanTheLengthGives0AndKeepsWhatCame) {
    Answer("abc");
    char buffer[6] = ".....";
    EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, 5, buffer, Callback, this));
    EXPECT_EQ("abc.."s, buffer);
    EXPECT_EQ(1u, callbacks) << "an empty read is not reported";
}

TEST_F(Range, LengthOf0OrBelowGives0WithoutARead) {
    Answer("abc");
    char buffer[1] = {'x'};
    for (const int32_t length : {0, -1, INT32_MIN})
        EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, length, buffer, Callback, this));
    EXPECT_EQ(3u, device.Requests().size()) << "the request is sent";
    EXPECT_EQ(0u, device.CountCalls("InternetReadFile"));
    EXPECT_EQ('x', buffer[0]);
}

TEST_F(Range, LengthOf0OnARefusalGivesMinus1) {
    Answer(WebReply::WithStatus(404));
    char buffer[1];
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 0, buffer, nullptr, nullptr));
}

TEST_F(Range, RefusalsGiveMinus1) {
    char buffer[4];
    for (const DWORD status : {300u, 301u, 404u, 416u, 500u}) {
        Answer(WebReply::WithStatus(status));
        EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    }
    Answer("abcd");
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
}

TEST_F(Range, FailuresBeforeTheReplyGiveMinus1) {
    char buffer[4];
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr)) << "unknown host";
    for (const char* function : {"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        Answer("abcd");
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr)) << function;
    }
}

TEST_F(Range, ReadThatFailsGives0WithoutAskingTheCallback) {
    constexpr int32_t length = chunk + 100;
    Answer(Content(length));
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    std::string buffer(length, '\0');
    EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, length, buffer.data(), Callback, this));
    EXPECT_EQ(1u, callbacks);
    EXPECT_TRUE(Content(chunk) == buffer.substr(0, chunk)) << "what came before stays";
}

TEST_F(Range, CancelledAtAnyCallbackGives0) {
    constexpr int32_t length = 2 * chunk + 100;
    for (size_t last = 1; last <= 3; ++last) {
        Answer(Content(length));
        callbacks = 0;
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        std::string buffer(length, '\0');
        EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, length, buffer.data(), Callback, this));
        EXPECT_EQ(last, callbacks);
    }
}

TEST_F(Range, BadArgumentsGiveMinus1AndSendNothing) {
    char buffer[4];
    EXPECT_EQ(-1, xfa704a3f(nullptr, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(-1, xfa704a3f(host, nullptr, 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, nullptr, nullptr, nullptr));
    EXPECT_TRUE(device.Calls().empty());
}
