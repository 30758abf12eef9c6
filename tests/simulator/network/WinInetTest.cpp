#include "SimulatorTest.h"

namespace {

class WinInet : public SimulatorTest {
protected:
    void Answer(const WebReply& reply) { device.AddHost(u"host.example", 80, reply); }

    /* The text of an information level: its units, or the error. */
    static std::u16string Query(HINTERNET request, DWORD level) {
        WCHAR buffer[64] = {};
        DWORD length = sizeof buffer;
        if (HttpQueryInfoW(request, level, buffer, &length, nullptr) == FALSE) {
            const std::string error = std::to_string(GetLastError());
            return u"error " + std::u16string(error.begin(), error.end());
        }
        EXPECT_EQ(0, buffer[length / sizeof(WCHAR)]) << "the length counts no terminator";
        return {buffer, length / sizeof(WCHAR)};
    }

    /* The error of a send, 0 when it succeeds. */
    static DWORD SendError(const WCHAR* host, INTERNET_PORT port) {
        const OpenRequest open(host, port);
        return open.Send() ? 0 : GetLastError();
    }
};

constexpr DWORD contentLength = HTTP_QUERY_CONTENT_LENGTH;
constexpr DWORD statusNumber = HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER;

}  // namespace

TEST_F(WinInet, RequestReachesItsHostWithEverythingThatWasGiven) {
    device.AddHost(u"Host.Example", 443, WebReply{});
    const HINTERNET session = InternetOpenW(u"Agent/1", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    const HINTERNET connection =
        InternetConnectW(session, u"hOST.example", 443, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    const HINTERNET request = HttpOpenRequestW(connection, u"POST", u"a/b.cgi?c=\u20AC", nullptr, nullptr,
                                               nullptr, INTERNET_FLAG_SECURE | 0x100, 0);
    char body[] = {'a', '\0', 'b'};
    EXPECT_TRUE(HttpSendRequestW(request, u"X: 1\nrest is not sent", 5, body, sizeof body));
    body[0] = 'z';
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& seen = device.Requests()[0];
    EXPECT_EQ(u"Agent/1", seen.agent);
    EXPECT_EQ(DWORD{INTERNET_OPEN_TYPE_DIRECT}, seen.accessType);
    EXPECT_EQ(u"hOST.example", seen.host);
    EXPECT_EQ(443, seen.port);
    EXPECT_EQ(u"POST", seen.verb);
    EXPECT_EQ(u"a/b.cgi?c=\u20AC", seen.path);
    EXPECT_EQ(0x00800100u, seen.flags);
    EXPECT_TRUE(seen.secure);
    EXPECT_EQ(u"X: 1\n", seen.headers);
    EXPECT_EQ(std::string("a\0b", 3), seen.body);
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
}

TEST_F(WinInet, NullVerbIsGetAndNullPathIsEmpty) {
    Answer({});
    const OpenRequest open;
    const HINTERNET request =
        HttpOpenRequestW(open.connection, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0);
    EXPECT_TRUE(HttpSendRequestW(request, nullptr, 0, nullptr, 0));
    EXPECT_EQ(u"GET", device.Requests().at(0).verb);
    EXPECT_EQ(u"", device.Requests().at(0).path);
    EXPECT_FALSE(device.Requests().at(0).secure);
    InternetCloseHandle(request);
}

TEST_F(WinInet, HeadersOfLengthMinusOneEndAtTheirTerminator) {
    Answer({});
    const OpenRequest open;
    EXPECT_TRUE(HttpSendRequestW(open.request, u"A: b\r\n", static_cast<DWORD>(-1), nullptr, 0));
    EXPECT_EQ(u"A: b\r\n", device.Requests().at(0).headers);
}

TEST_F(WinInet, UnknownHostRefusedPortAndTimeOutFailTheSend) {
    Answer({});
    device.AddHost(u"slow.example", 80, WebReply::TimedOut());
    device.AddHost(u"closed.example", 80, WebReply::Refused());
    EXPECT_EQ(0u, SendError(u"host.example", 80));
    EXPECT_EQ(12007u, SendError(u"other.example", 80));
    EXPECT_EQ(12029u, SendError(u"host.example", 81));
    EXPECT_EQ(12002u, SendError(u"slow.example", 80));
    EXPECT_EQ(12029u, SendError(u"closed.example", 80));
}

TEST_F(WinInet, HandlerAnswersEachRequestAnew) {
    int asked = 0;
    device.AddHost(u"host.example", 80, [&asked](const WebRequest& request) {
        EXPECT_EQ(u"file", request.path);
        return WebReply::WithBody(std::to_string(++asked));
    });
    const OpenRequest open;
    for (const char* expected : {"1", "2"}) {
        EXPECT_TRUE(open.Send());
        EXPECT_EQ(expected, Read(open.request, 10).bytes);
    }
}

TEST_F(WinInet, StatusAndLengthAreTextOrNumber) {
    WebReply reply = WebReply::WithBody("abc");
    reply.status = 404;
    Answer(reply);
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    EXPECT_EQ(u"404", Query(open.request, HTTP_QUERY_STATUS_CODE));
    EXPECT_EQ(u"3", Query(open.request, contentLength));
    DWORD number = 1000;
    DWORD length = sizeof number;
    EXPECT_TRUE(HttpQueryInfoW(open.request, statusNumber, &number, &length, nullptr));
    EXPECT_EQ(404u, number);
    EXPECT_EQ(sizeof(DWORD), length);
}

TEST_F(WinInet, LengthIsAbsentOrWrongAsTheReplySays) {
    WebReply reply = WebReply::WithBody("abc");
    reply.sendsContentLength = false;
    Answer(reply);
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    EXPECT_EQ(u"error 12150", Query(open.request, contentLength));
    reply.headers = {{u"content-LENGTH", u"many"}};
    Answer(reply);
    EXPECT_TRUE(open.Send());
    EXPECT_EQ(u"many", Query(open.request, contentLength));
    DWORD number = 0;
    DWORD length = sizeof number;
    EXPECT_FALSE(
        HttpQueryInfoW(open.request, contentLength | HTTP_QUERY_FLAG_NUMBER, &number, &length, nullptr));
    EXPECT_EQ(12153u, GetLastError());
}

TEST_F(WinInet, ProducedBodyHasNoLengthOfItsOwn) {
    WebReply reply;
    reply.produce = [](char*, size_t) { return size_t{0}; };
    Answer(reply);
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    EXPECT_EQ(u"error 12150", Query(open.request, contentLength));
}

TEST_F(WinInet, NoAnswerAtAllIsStatusZeroWithoutHeadersOrBody) {
    Answer(WebReply::Nothing());
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    EXPECT_EQ(u"0", Query(open.request, HTTP_QUERY_STATUS_CODE));
    EXPECT_EQ(u"error 12150", Query(open.request, contentLength));
    EXPECT_EQ((ReadResult{true, 0, ""}), Read(open.request, 10));
}

TEST_F(WinInet, SmallBufferIsToldTheBytesThatTheTextNeeds) {
    Answer(WebReply::WithBody("abc"));
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    WCHAR buffer[4] = {u'x', u'x', u'x', u'x'};
    DWORD length = 6;
    EXPECT_FALSE(HttpQueryInfoW(open.request, HTTP_QUERY_STATUS_CODE, buffer, &length, nullptr));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ(8u, length);
    EXPECT_EQ(u'x', buffer[0]);
    EXPECT_TRUE(HttpQueryInfoW(open.request, HTTP_QUERY_STATUS_CODE, buffer, &length, nullptr));
    EXPECT_EQ(6u, length);
}

TEST_F(WinInet, IndexWalksThroughHeadersOfOneName) {
    WebReply reply;
    reply.headers = {{u"Location", u"first"}, {u"Location", u"second"}};
    Answer(reply);
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    DWORD index = 0;
    for (const char16_t* expected : {u"first", u"second"}) {
        WCHAR buffer[10];
        DWORD length = sizeof buffer;
        EXPECT_TRUE(HttpQueryInfoW(open.request, HTTP_QUERY_LOCATION, buffer, &length, &index));
        EXPECT_EQ(expected, std::u16string(buffer));
    }
    WCHAR buffer[10];
    DWORD length = sizeof buffer;
    EXPECT_FALSE(HttpQueryInfoW(open.request, HTTP_QUERY_LOCATION, buffer, &length, &index));
    EXPECT_EQ(2u, index);
}

TEST_F(WinInet, InformationThatIsNotSimulatedIsAViolation) {
    Answer({});
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    Query(open.request, HTTP_QUERY_ETAG);
    Query(open.request, HTTP_QUERY_CONTENT_LENGTH | HTTP_QUERY_FLAG_SYSTEMTIME);
    EXPECT_EQ((Lines{"HttpQueryInfoW(request 1, 0x00000036): this information is not simulated",
                     "HttpQueryInfoW(request 1, 0x40000005): this information is not simulated"}),
              TakeViolations());
}

TEST_F(WinInet, NothingCanBeReadOrAskedBeforeTheSend) {
    const OpenRequest open;
    EXPECT_EQ((ReadResult{false, 12019, ""}), Read(open.request, 10));
    EXPECT_EQ(u"error 12019", Query(open.request, contentLength));
    EXPECT_FALSE(open.Send()) << "there is no such host";
    EXPECT_EQ((ReadResult{false, 12019, ""}), Read(open.request, 10));
}

TEST_F(WinInet, NullHandlesAndNullHostFailWithoutViolation) {
    EXPECT_EQ(nullptr, InternetConnectW(nullptr, u"host", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    EXPECT_EQ(nullptr, HttpOpenRequestW(nullptr, u"GET", u"file", nullptr, nullptr, nullptr, 0, 0));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    EXPECT_FALSE(HttpSendRequestW(nullptr, nullptr, 0, nullptr, 0));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    EXPECT_EQ((ReadResult{false, ERROR_INVALID_HANDLE, ""}), Read(nullptr, 10));
    EXPECT_EQ(u"error 6", Query(nullptr, contentLength));
    EXPECT_FALSE(InternetCloseHandle(nullptr));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    const OpenRequest open(nullptr);
    EXPECT_EQ(nullptr, open.connection);
}

TEST_F(WinInet, BodyWithoutBytesBehindItIsRefused) {
    Answer({});
    const OpenRequest open;
    EXPECT_FALSE(HttpSendRequestW(open.request, nullptr, 0, nullptr, 4));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(WinInet, OtherServicesAreAViolation) {
    const HINTERNET session = InternetOpenW(nullptr, 0, nullptr, nullptr, 0);
    EXPECT_EQ(nullptr, InternetConnectW(session, u"host", 21, nullptr, nullptr, INTERNET_SERVICE_FTP, 0, 0));
    EXPECT_EQ(1u, TakeViolations().size());
    InternetCloseHandle(session);
}
