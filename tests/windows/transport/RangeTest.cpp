/* Ranged reads of replies of every kind. */
#include "transport/TransferTest.h"

#include <chrono>
#include <semaphore>

using namespace std::string_literals;

namespace {

class Range : public TransferTest {
protected:
    /* Answers with status 206 and a length. */
    void AnswerPart(std::string_view bytes) {
        AnswerRaw(Head("206 Partial Content", LengthField(bytes.size())) + std::string(bytes));
    }

    /* Reads into a buffer that is filled with dots before, and has a few more than `length`. */
    int32_t Read(int64_t offset, int32_t length) {
        buffer.assign(length > 0 ? static_cast<size_t>(length) + 8 : 8, '.');
        callbacks = 0;
        return library.readRange(host, urlPath, offset, length, buffer.data(), Callback, this);
    }

    /* Expects the last read to have put these bytes, and no more, into the buffer. */
    void ExpectBuffer(const std::string& bytes) const {
        EXPECT_TRUE(buffer == bytes + std::string(buffer.size() - bytes.size(), '.'));
    }

    std::string buffer;
};

}  // namespace

TEST_F(Range, FirstByteOfAFile) {
    AnswerPart("a");
    EXPECT_EQ(1, Read(0, 1));
    ExpectBuffer("a");
    EXPECT_EQ(1U, callbacks);
}

TEST_F(Range, LengthsAroundOneRead) {
    for (const uint32_t size : {1U, chunk - 1, chunk, chunk + 1, 2 * chunk, 10U << 20}) {
        SCOPED_TRACE(size);
        const std::string part = Content(size);
        const auto length = static_cast<int32_t>(size);
        AnswerPart(part);
        EXPECT_EQ(length, Read(1000, length));
        ExpectBuffer(part);
        EXPECT_EQ((size + chunk - 1) / chunk, callbacks) << "one for each read, no empty one";
    }
}

TEST_F(Range, FromAbove4GigabytesIsReadLikeAnyOther) {
    AnswerPart("abcd");
    EXPECT_EQ(4, Read(0x100000000, 4));
    ExpectBuffer("abcd");
}

TEST_F(Range, ServerThatIgnoresItGivesItsFilesFirstBytes) {
    constexpr int32_t length = 2 * chunk + 100;
    server.Answer(Content(2 * length));
    EXPECT_EQ(length, Read(5000, length));
    ExpectBuffer(Content(length));
    EXPECT_EQ(3U, callbacks);
}

TEST_F(Range, BodyThatIsLongerThanAskedForIsLeftAlone) {
    AnswerPart(Content(5000));
    EXPECT_EQ(10, Read(0, 10));
    ExpectBuffer(Content(10));
}

TEST_F(Range, RepliesWithoutALengthAndInChunksAreReadWhole) {
    AnswerRaw(Head("206 Partial Content") + Content(5000));
    EXPECT_EQ(5000, Read(0, 5000));
    ExpectBuffer(Content(5000));
    AnswerRaw(Head("206 Partial Content", "Transfer-Encoding: chunked\r\n") +
              "1\r\na\r\n3\r\nbcd\r\n2\r\nef\r\n0\r\n\r\n");
    EXPECT_EQ(6, Read(0, 6));
    ExpectBuffer("abcdef");
}

TEST_F(Range, ReplyShorterThanTheLengthGives0AndKeepsWhatCame) {
    for (const size_t size : {0U, 1U, chunk - 1, chunk, chunk + 1, 3 * chunk - 1}) {
        SCOPED_TRACE(size);
        AnswerPart(Content(size));
        EXPECT_EQ(0, Read(0, 3 * chunk));
        ExpectBuffer(Content(size));
        EXPECT_EQ((size + chunk - 1) / chunk, callbacks) << "an empty read is not reported";
    }
}

TEST_F(Range, ReplyCutByAnEndGives0WhateverItsLengthSaid) {
    for (const size_t at : {0U, 1U, 4096U, 9999U}) {
        SCOPED_TRACE(at);
        AnswerRaw(Head("206 Partial Content", LengthField(10000)) + Content(at));
        EXPECT_EQ(0, Read(0, 10000));
        ExpectBuffer(Content(at));
    }
}

TEST_F(Range, ReplyCutByAResetGives0WithoutAskingTheCallbackAboutTheFailure) {
    ConnectionScript script{Head("206 Partial Content", LengthField(3 * chunk)) + Content(chunk),
                            ConnectionScript::Ending::Reset};
    std::binary_semaphore taken{0};
    script.beforeEnding = [&] { EXPECT_TRUE(taken.try_acquire_for(std::chrono::seconds(30))); };
    atCallback = [&] {
        taken.release();
        return 1;
    };
    server.Answer(script);
    EXPECT_EQ(0, Read(0, 3 * chunk));
    EXPECT_EQ(1U, callbacks);
    ExpectBuffer(Content(chunk));
}

// Whether the sending fails, or WinINet under Wine takes it for a reply of status 0, depends on when the
// reset arrives.
TEST_F(Range, ResetInPlaceOfAReplyGivesMinus1Or0) {
    server.Answer(ConnectionScript{"", ConnectionScript::Ending::Reset});
    const int32_t result = Read(0, 4);
    EXPECT_TRUE(result == -1 || result == 0) << result;
    ExpectBuffer("");
    EXPECT_EQ(0U, callbacks);
}

TEST_F(Range, CancelledAtAnyCallbackGives0AndKeepsWhatCame) {
    const std::string part = Content(5 * chunk);
    for (size_t last = 1; last <= 5; ++last) {
        SCOPED_TRACE(last);
        AnswerPart(part);
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        EXPECT_EQ(0, Read(0, 5 * chunk));
        EXPECT_EQ(last, callbacks);
        ExpectBuffer(part.substr(0, last * chunk));
    }
}

TEST_F(Range, NullCallbackWorks) {
    AnswerPart("abcd");
    char bytes[] = "....";
    EXPECT_EQ(4, library.readRange(host, urlPath, 0, 4, bytes, nullptr, this));
    EXPECT_STREQ("abcd", bytes);
}

TEST_F(Range, ContextIsPassedOnUntouched) {
    static void* received;
    const auto keep = [](void* context) -> int {
        received = context;
        return 1;
    };
    AnswerPart("abcd");
    char bytes[4];
    for (void* const context : {static_cast<void*>(this), static_cast<void*>(nullptr)}) {
        received = &received;
        EXPECT_EQ(4, library.readRange(host, urlPath, 0, 4, bytes, keep, context));
        EXPECT_EQ(context, received);
    }
}

TEST_F(Range, StatusBelow300IsTaken) {
    for (const char* status : {"200 OK", "206 Partial Content", "299 Fine"}) {
        SCOPED_TRACE(status);
        AnswerRaw(Head(status, LengthField(4)) + "abcd");
        EXPECT_EQ(4, Read(0, 4));
        ExpectBuffer("abcd");
    }
}

TEST_F(Range, RefusalsGiveMinus1WhateverTheLength) {
    for (const char* status : {"300 Multiple Choices", "304 Not Modified", "404 Not Found",
                               "416 Range Not Satisfiable", "500 Internal Server Error"}) {
        SCOPED_TRACE(status);
        AnswerRaw(Head(status, LengthField(4)) + "abcd");
        for (const int32_t length : {4, 0, -1}) {
            EXPECT_EQ(-1, Read(0, length));
            ExpectBuffer("");
        }
    }
    EXPECT_EQ(0U, callbacks);
}

TEST_F(Range, RedirectionsAreNotFollowed) {
    AnswerRaw(Head("302 Found", "Location: http://maps.example/other.map\r\n" + LengthField(0)));
    EXPECT_EQ(-1, Read(0, 4));
    EXPECT_EQ(1U, server.TakeRequests().size());
}

TEST_F(Range, LengthOf0OrBelowIsAskedForAndGives0) {
    AnswerPart("abcd");
    for (const int32_t length : {0, -1, INT32_MIN}) {
        SCOPED_TRACE(length);
        EXPECT_EQ(0, Read(0, length));
        ExpectBuffer("");
        EXPECT_EQ(0U, callbacks);
        EXPECT_EQ(1U, server.TakeRequests().size());
    }
}
