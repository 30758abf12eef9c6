/* The stack that calls need in all: Windows CE gives a thread 64 KB, of which docs/host-guide.md promises
 * that half is enough. */
#include "helpers/StackUse.h"
#include "support/MapShopReply.h"
#include "transport/TransferTest.h"

namespace {

constexpr size_t mostBytes = 32 * 1024;

class StackUse : public TransferTest {
protected:
    static void ExpectRoomFor(const std::function<void()>& call) {
        const size_t used = StackUseOf(call);
        EXPECT_LE(used, mostBytes);
        RecordProperty("bytes", static_cast<int>(used));
    }
};

}  // namespace

TEST(StackUseOf, CountsWhatACallUses) {
    const auto call = [] {
        volatile unsigned char area[20000];
        area[0] = 1;
        area[sizeof area - 1] = 1;
    };
    EXPECT_GE(StackUseOf(call), 20000U);
    EXPECT_LE(StackUseOf(call), 24000U);
    EXPECT_LE(StackUseOf([] {}), 4000U);
}

TEST(StackUseOfLoading, FitsTwice) {
    EXPECT_LE(StackUseOf([] { const ShippedLibrary library; }), mostBytes);
}

TEST_F(StackUse, OfASearchFitsTwice) {
    const MapShopReply reply = MapShopReply().Int32(0).Int32(1).Map(L"Malta", 1200, L"/m", L"").Int32(24);
    server.Answer(reply.bytes);
    SearchOutcome outcome;
    ExpectRoomFor([&] { outcome = library.Search(); });
    EXPECT_EQ(24, outcome.finalValue);
}

TEST_F(StackUse, OfADownloadFitsTwice) {
    const std::string content = Content(20000);
    AnswerRaw(Head("200 OK", LengthField(content.size())) + content);
    int32_t result = 0;
    ExpectRoomFor([&] { result = Download(); });
    EXPECT_EQ(1, result);
}

TEST_F(StackUse, OfARangeFitsTwice) {
    AnswerRaw(Head("206 Partial Content", LengthField(6)) + "abcdef");
    char buffer[6];
    int32_t result = 0;
    ExpectRoomFor([&] { result = library.readRange(host, urlPath, 0, 6, buffer, nullptr, nullptr); });
    EXPECT_EQ(6, result);
}
