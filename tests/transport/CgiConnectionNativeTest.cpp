#include "transport/CgiFixture.h"

#include "LMOnline.h"
#include "transport/NetworkConnection.h"

TEST_F(Cgi, RequestThatAskedForNoDataConnectionGivesNoneUp) {
    EXPECT_TRUE(EstablishNetworkConnection());
    { const CgiRequest request(host, path, false, false); }
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
    EXPECT_TRUE(ReleaseNetworkConnection());
}

TEST_F(Cgi, CauseOfARequestThatWasNotSentIsNotAskedFor) {
    const CgiRequest request(host, path, false, false);
    EXPECT_EQ(DWORD{0}, request.GetCause(1));
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}

TEST_F(Cgi, RefusalWhosePageBeginsWithZerosIsOne) {
    WebReply page = WebReply::WithBody(std::string(4, '\0'));
    page.status = 404;
    Answer(std::move(page));
    CgiRequest request(host, path, false, false);
    ASSERT_TRUE(WithCode(request).SendRequest());
    int32_t status = -1;
    EXPECT_TRUE(request.ReadInt32(status));
    EXPECT_FALSE(request.ReadInt32(status));
    EXPECT_EQ(DWORD{LM_ERROR_HTTP_STATUS | LM_ERROR_STATUS(404)}, request.GetCause(status));
}
