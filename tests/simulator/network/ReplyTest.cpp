#include "SimulatorTest.h"

namespace {

class Reply : public SimulatorTest {
protected:
    /* Sends a request to a host that answers so, and leaves it open for reading. */
    HINTERNET Answered(const WebReply& reply) {
        device.AddHost(u"host.example", 80, reply);
        open_.emplace();
        EXPECT_TRUE(open_->Send());
        return open_->request;
    }

    void TearDown() override {
        open_.reset();
        SimulatorTest::TearDown();
    }

    static WebReply Breaking(WebReply::Break breaks, uint64_t at) {
        WebReply reply = WebReply::WithBody("abcdef");
        reply.breaks = breaks;
        reply.breakAt = at;
        return reply;
    }

private:
    std::optional<OpenRequest> open_;
};

const ReadResult end{true, 0, ""};

}  // namespace

TEST_F(Reply, WholeBodyComesAtOnceThenNothing) {
    const HINTERNET request = Answered(WebReply::WithBody("abcdef"));
    EXPECT_EQ((ReadResult{true, 0, "abcdef"}), Read(request, 256));
    EXPECT_EQ(end, Read(request, 256));
    EXPECT_EQ(end, Read(request, 256));
}

TEST_F(Reply, ReadsTakeNoMoreThanTheyAskFor) {
    const HINTERNET request = Answered(WebReply::WithBody("abcdef"));
    EXPECT_EQ((ReadResult{true, 0, "abcd"}), Read(request, 4));
    EXPECT_EQ(end, Read(request, 0));
    EXPECT_EQ((ReadResult{true, 0, "ef"}), Read(request, 4));
}

TEST_F(Reply, ChunksBoundTheReadsAndTheLastOneHoldsForAllFurther) {
    WebReply reply = WebReply::WithBody("abcdefgh");
    reply.chunks = {3, 1, 2};
    const HINTERNET request = Answered(reply);
    EXPECT_EQ("abc", Read(request, 256).bytes);
    EXPECT_EQ("d", Read(request, 256).bytes);
    EXPECT_EQ("ef", Read(request, 256).bytes);
    EXPECT_EQ("gh", Read(request, 256).bytes);
    EXPECT_EQ(end, Read(request, 256));
}

TEST_F(Reply, ChunkOfNoBytesIsAMistakeInTheTest) {
    WebReply reply = WebReply::WithBody("abc");
    reply.chunks = {1, 0};
    Answered(reply);
    EXPECT_EQ(Lines{"a scripted reply has a chunk of 0 bytes, which would end it"}, TakeViolations());
}

TEST_F(Reply, CloseInMidBodyLooksLikeTheEnd) {
    const HINTERNET request = Answered(Breaking(WebReply::Break::Close, 4));
    EXPECT_EQ((ReadResult{true, 0, "abcd"}), Read(request, 256));
    EXPECT_EQ(end, Read(request, 256));
}

TEST_F(Reply, ResetFailsTheReadThatMeetsItWithTheBytesBeforeIt) {
    const HINTERNET request = Answered(Breaking(WebReply::Break::Reset, 4));
    EXPECT_EQ((ReadResult{true, 0, "abc"}), Read(request, 3));
    EXPECT_EQ((ReadResult{false, 10054, "d"}), Read(request, 3));
    EXPECT_EQ(end, Read(request, 3));
}

TEST_F(Reply, ResetRightBehindAFullReadFailsTheNextOne) {
    WebReply reply = Breaking(WebReply::Break::Reset, 4);
    reply.resetError = ERROR_INTERNET_CONNECTION_ABORTED;
    const HINTERNET request = Answered(reply);
    EXPECT_EQ((ReadResult{true, 0, "abcd"}), Read(request, 4));
    EXPECT_EQ((ReadResult{false, 12030, ""}), Read(request, 4));
    EXPECT_EQ(end, Read(request, 4));
}

TEST_F(Reply, ResetMayComeBeforeTheFirstByteAndAfterTheLast) {
    EXPECT_EQ((ReadResult{false, 10054, ""}), Read(Answered(Breaking(WebReply::Break::Reset, 0)), 256));
    EXPECT_EQ((ReadResult{false, 10054, "abcdef"}), Read(Answered(Breaking(WebReply::Break::Reset, 6)), 256));
}

TEST_F(Reply, ResetMeetsChunkedReadsToo) {
    WebReply reply = Breaking(WebReply::Break::Reset, 2);
    reply.chunks = {1};
    const HINTERNET request = Answered(reply);
    EXPECT_EQ((ReadResult{true, 0, "a"}), Read(request, 256));
    EXPECT_EQ((ReadResult{true, 0, "b"}), Read(request, 256));
    EXPECT_EQ((ReadResult{false, 10054, ""}), Read(request, 256));
}

TEST_F(Reply, BreakBehindTheBodyIsAMistakeInTheTest) {
    Answered(Breaking(WebReply::Break::Close, 7));
    EXPECT_EQ(Lines{"a scripted reply breaks behind the end of its body"}, TakeViolations());
}

TEST_F(Reply, ProducedBodyEndsWhenTheProducerGivesNothing) {
    WebReply reply;
    size_t left = 5;
    reply.produce = [&left](char* buffer, size_t most) {
        const size_t given = std::min(left, most);
        std::fill_n(buffer, given, 'x');
        left -= given;
        return given;
    };
    const HINTERNET request = Answered(reply);
    EXPECT_EQ((ReadResult{true, 0, "xxxx"}), Read(request, 4));
    EXPECT_EQ((ReadResult{true, 0, "x"}), Read(request, 4));
    EXPECT_EQ(end, Read(request, 4));
    left = 5;
    EXPECT_EQ(end, Read(request, 4)) << "the producer is not asked again";
}

TEST_F(Reply, ProducedBodyBreaksBeyondFourGigabytes) {
    constexpr uint64_t breakAt = 0x1'0000'0002;
    WebReply reply;
    reply.produce = [](char*, size_t most) { return most; };
    reply.breaks = WebReply::Break::Reset;
    reply.breakAt = breakAt;
    const HINTERNET request = Answered(reply);
    std::vector<char> buffer(0x10000000);
    uint64_t total = 0;
    DWORD count = 0;
    while (InternetReadFile(request, buffer.data(), static_cast<DWORD>(buffer.size()), &count) != FALSE) {
        total += count;
    }
    EXPECT_EQ(breakAt, total + count);
    EXPECT_EQ(2u, count);
}

TEST_F(Reply, ProducerThatGivesTooMuchIsAMistakeInTheTest) {
    WebReply reply;
    reply.produce = [](char*, size_t most) { return most + 1; };
    EXPECT_EQ(4u, Read(Answered(reply), 4).bytes.size());
    EXPECT_EQ(Lines{"a reply's producer gave more bytes than it was asked for"}, TakeViolations());
}
