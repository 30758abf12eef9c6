#include "transport/CgiFixture.h"

#include "support/MapShopReply.h"

namespace {

/* How often reading the next string of the reply takes memory. */
size_t AllocationsToRead(CgiRequest& request, WideString& text) {
    AllocationWatch watch;
    EXPECT_TRUE(request.ReadString(text));
    return watch.Count();
}

}  // namespace

TEST_F(Cgi, StringTakesTheMemoryThatItNeedsAtOnceAndKeepsIt) {
    MapShopReply reply;
    for (const size_t size : {1000u, 1001u, 1001u, 500u})
        reply.Text(WideString(size, TEXT('x')));
    Answer(reply.bytes);
    CgiRequest request(host, path, false, false);
    ASSERT_TRUE(WithCode(request).SendRequest());
    WideString text;
    EXPECT_EQ(1u, AllocationsToRead(request, text));
    EXPECT_EQ(1u, AllocationsToRead(request, text));
    EXPECT_LT(text.capacity(), 1100u) << "a string that grows doubles its memory";
    EXPECT_EQ(0u, AllocationsToRead(request, text));
    EXPECT_EQ(0u, AllocationsToRead(request, text));
    EXPECT_EQ(500u, text.size());
}
