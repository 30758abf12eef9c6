/* How the reply to a CGI request is read. */
#include "transport/BufferSizes.h"
#include "transport/CgiFixture.h"

using namespace std::string_view_literals;

namespace {

/* A read into a buffer of that size, to which a reply of 4 bytes comes. */
std::string ReadOf4Bytes(int request, size_t bufferSize) {
    return "InternetReadFile(request " + std::to_string(request) + ", " + std::to_string(bufferSize) +
           ") = TRUE, 4";
}

}  // namespace

TEST_F(Cgi, HttpStatusIsNotLookedAt) {
    WebReply reply = WebReply::WithBody("abcd");
    for (const DWORD status : {302u, 404u, 500u}) {
        SCOPED_TRACE(status);
        reply.status = status;
        Answer(reply);
        CgiRequest request(host, path, false, false);
        EXPECT_TRUE(WithCode(request).SendRequest());
        char bytes[4];
        request.ReadBytes(bytes, 4);
        EXPECT_TRUE(request.good);
        EXPECT_EQ("abcd"sv, std::string_view(bytes, 4));
    }
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}

TEST_F(Cgi, NoReplyAtAllIsASuccessfulSendWithNothingToRead) {
    Answer(WebReply::Nothing());
    CgiRequest request(host, path, false, false);
    EXPECT_TRUE(WithCode(request).SendRequest());
    int32_t value = -1;
    request.ReadInt32(value);
    EXPECT_FALSE(request.good);
    EXPECT_EQ(-1, value);
}

TEST_F(Cgi, ReceiveBufferHasItsSmallestSizeAfterA12ByteBody) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    request.WriteBytes("twelve bytes", 12);
    request.SendRequest();
    char one = 0;
    request.ReadBytes(&one, 1);
    EXPECT_EQ((std::vector<std::string>{ReadOf4Bytes(1, receiveBufferSize)}),
              device.Calls({"InternetReadFile"}));
}

TEST_F(Cgi, ReceiveBufferHasTheSizeOfALargerBody) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    constexpr uint32_t size = receiveBufferSize + 744;
    const std::string body(size, 'x');
    request.WriteBytes(body.data(), size);
    request.SendRequest();
    char one = 0;
    request.ReadBytes(&one, 1);
    EXPECT_EQ((std::vector<std::string>{ReadOf4Bytes(1, size)}), device.Calls({"InternetReadFile"}));
    EXPECT_EQ(body, device.Requests()[0].body);
}

TEST_F(Cgi, ReceiveBufferSizeAroundItsSmallest) {
    Answer("abcd");
    for (const uint32_t size : {receiveBufferSize - 1, receiveBufferSize, receiveBufferSize + 1}) {
        CgiRequest request(host, path, false, false);
        const std::string body(size, 'x');
        request.WriteBytes(body.data(), size);
        request.SendRequest();
        char one = 0;
        request.ReadBytes(&one, 1);
    }
    EXPECT_EQ(
        (std::vector<std::string>{ReadOf4Bytes(1, receiveBufferSize), ReadOf4Bytes(2, receiveBufferSize),
                                  ReadOf4Bytes(3, receiveBufferSize + 1)}),
        device.Calls({"InternetReadFile"}));
}

TEST_F(Cgi, Int32WithTwoBytesLeftSucceedsWithTwoBytesFilledAndTheNextFails) {
    Answer("\x11\x22"sv);
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    int32_t value = 0x77665544;
    request.ReadInt32(value);
    EXPECT_TRUE(request.good);
    EXPECT_EQ(0x77662211, value);
    char one = 'x';
    EXPECT_FALSE(request.Read(&one, 1));
    EXPECT_EQ('x', one);
}

TEST_F(Cgi, ReadOfNoBytesFailsThoughBytesAreThere) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    char one = 'x';
    EXPECT_FALSE(request.Read(&one, 0));
    EXPECT_EQ('x', one);
    EXPECT_EQ(0u, device.CountCalls("InternetReadFile"));
}

TEST_F(Cgi, ReplyArrivesWholeWhateverItsChunks) {
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>(i * 7);
    for (const std::vector<size_t>& chunks :
         {std::vector<size_t>{}, {1}, {3, 1, 255, 256, 257}, {4096}, {255}, {1, 256}}) {
        WebReply reply = WebReply::WithBody(bytes);
        reply.chunks = chunks;
        Answer(reply);
        CgiRequest request(host, path, false, false);
        WithCode(request).SendRequest();
        std::string received(5000, '\0');
        request.ReadBytes(received.data(), 5000);
        EXPECT_TRUE(request.good);
        EXPECT_EQ(bytes, received);
        EXPECT_FALSE(request.Read(received.data(), 1));
    }
}

TEST_F(Cgi, BytesBeforeAResetAreStillRead) {
    for (const DWORD error : {10054u, 12030u}) {
        WebReply reply = WebReply::WithBody("abcdefgh");
        reply.breaks = WebReply::Break::Reset;
        reply.breakAt = 6;
        reply.resetError = error;
        Answer(reply);
        CgiRequest request(host, path, false, false);
        WithCode(request).SendRequest();
        char bytes[9] = "........";
        request.ReadBytes(bytes, 8);
        EXPECT_TRUE(request.good) << "some bytes were found";
        EXPECT_EQ("abcdef.."sv, bytes);
        request.ReadBytes(bytes, 1);
        EXPECT_FALSE(request.good);
    }
}

TEST_F(Cgi, NetworkReadThatFailsWithoutBytesIsTheEnd) {
    Answer("abcd");
    device.FailCall("InternetReadFile", 1, ERROR_INTERNET_CONNECTION_ABORTED);
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    int32_t value = 3;
    request.ReadInt32(value);
    EXPECT_FALSE(request.good);
    EXPECT_EQ(3, value);
}

TEST_F(Cgi, EachReadPastTheEndAsksTheNetworkAgain) {
    Answer("");
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    char one = 0;
    EXPECT_FALSE(request.Read(&one, 1));
    EXPECT_FALSE(request.Read(&one, 1));
    EXPECT_EQ(2u, device.CountCalls("InternetReadFile"));
}
