/* The readers take what a stream has fetched ahead without asking it. Nothing of that may show: a reply reads
 * as it does from a stream that fetches nothing ahead. */
#include "support/MemoryStream.h"
#include "transport/BufferSizes.h"
#include "transport/CgiFixture.h"

namespace {

/* What the readers made of one message. */
struct Reading {
    std::string raw;
    int32_t number = -2;
    std::vector<WideString> texts;
    std::vector<bool> results;
    bool good = true;
    uint32_t byteCount = 0;

    bool operator==(const Reading&) const = default;
};

/* Reads `raw` bytes, so that what follows lies at an odd address or an even one, then a number and three
 * texts of which the last one goes into a field of 200 units. */
Reading ReadAll(ByteStream& stream, uint32_t raw) {
    Reading reading;
    reading.raw.resize(raw, '?');
    if (raw > 0) reading.results.push_back(stream.ReadBytes(reading.raw.data(), raw));
    reading.results.push_back(stream.ReadInt32(reading.number));
    for (int i = 0; i < 2; ++i)
        reading.results.push_back(stream.ReadString(reading.texts.emplace_back()));
    WCHAR field[200];
    std::fill(std::begin(field), std::end(field), WCHAR{'?'});
    reading.results.push_back(stream.ReadFixedString(field));
    reading.texts.emplace_back(field, std::size(field));
    reading.good = stream.good;
    reading.byteCount = stream.byteCount;
    return reading;
}

/* A message that ReadAll reads. A text longer than the field, one with a unit 0, one whose units have all
 * bits. */
std::string Message(uint32_t raw, bool wide, size_t length) {
    MemoryStream stream;
    stream.wideStrings = wide;
    stream.WriteBytes("abcd", raw);
    stream.WriteInt32(-123456789);
    WideString text;
    for (size_t i = 0; i < length; ++i)
        text.push_back(static_cast<WCHAR>(0xFFFF - 771 * i));
    stream.WriteString(text);
    text[length / 2] = 0;
    stream.WriteString(text + TEXT("end"));
    stream.WriteString(text);
    return stream.contents;
}

class FetchedAhead : public Cgi {
protected:
    Reading ReadReply(const std::string& bytes, std::vector<size_t> chunks, uint32_t raw, bool wide) {
        WebReply reply = WebReply::WithBody(bytes);
        reply.chunks = std::move(chunks);
        Answer(std::move(reply));
        CgiRequest request(host, path, false, false);
        WithCode(request).SendRequest();
        request.wideStrings = wide;
        return ReadAll(request, raw);
    }

    static Reading ReadPlainly(const std::string& bytes, uint32_t raw, bool wide) {
        MemoryStream stream(bytes);
        stream.wideStrings = wide;
        return ReadAll(stream, raw);
    }
};

}  // namespace

TEST_F(FetchedAhead, NothingShowsAtAnyCutAndAnyPieces) {
    for (const bool wide : {true, false}) {
        for (const uint32_t raw : {0u, 1u, 2u, 3u}) {
            const std::string whole = Message(raw, wide, 37);
            for (size_t size = 0; size <= whole.size(); ++size) {
                const std::string bytes = whole.substr(0, size);
                const Reading expected = ReadPlainly(bytes, raw, wide);
                for (const size_t most : {1u, 2u, 3u, 5u, 64u, 256u}) {
                    ASSERT_EQ(expected, ReadReply(bytes, {most}, raw, wide))
                        << "wide " << wide << ", raw " << raw << ", size " << size << ", pieces of " << most;
                }
            }
        }
    }
}

TEST_F(FetchedAhead, NothingShowsWithTextsLongerThanTheBuffer) {
    for (const size_t length : {127u, 128u, 129u, 130u, 255u, 256u, 257u, 1000u}) {
        for (const uint32_t raw : {0u, 1u, 2u, 3u}) {
            SCOPED_TRACE(length);
            const std::string bytes = Message(raw, true, length);
            const Reading expected = ReadPlainly(bytes, raw, true);
            EXPECT_TRUE(expected.good);
            EXPECT_EQ(expected, ReadReply(bytes, {256}, raw, true));
            EXPECT_EQ(expected, ReadReply(bytes, {255, 1, 256}, raw, true));
        }
    }
}

TEST_F(FetchedAhead, ReadOfNoBytesFailsThoughBytesAreThere) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    char one = 0;
    EXPECT_TRUE(request.ReadBytes(&one, 1));
    EXPECT_FALSE(request.ReadBytes(&one, 0));
    EXPECT_FALSE(request.good);
    EXPECT_TRUE(request.ReadBytes(&one, 1)) << "the bytes are still there";
    EXPECT_EQ('b', one);
    EXPECT_FALSE(request.good);
    EXPECT_EQ(2u, request.byteCount);
}

TEST_F(FetchedAhead, NothingShowsWithABufferAsLargeAsALongBody) {
    const std::string bytes = Message(1, true, 1000);
    Answer(bytes);
    CgiRequest request(host, path, false, false);
    const std::string body(20 * receiveBufferSize, 'x');
    request.WriteBytes(body.data(), static_cast<uint32_t>(body.size()));
    request.SendRequest();
    EXPECT_EQ(ReadPlainly(bytes, 1, true), ReadAll(request, 1));
}

TEST_F(FetchedAhead, SendingAgainForgetsWhatWasNotRead) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    char one = 0;
    EXPECT_TRUE(request.ReadBytes(&one, 1));
    request.SendRequest();
    EXPECT_TRUE(request.ReadBytes(&one, 1));
    EXPECT_EQ('a', one);
}

TEST_F(FetchedAhead, WritingAfterAReplyHasBegunKeepsWhatWasFetched) {
    Answer("abcd");
    CgiRequest request(host, path, false, false);
    WithCode(request).SendRequest();
    char one = 0;
    EXPECT_TRUE(request.ReadBytes(&one, 1));
    const std::string more(1000, 'x');
    request.WriteBytes(more.data(), 1000);
    EXPECT_TRUE(request.ReadBytes(&one, 1));
    EXPECT_EQ('b', one);
}
