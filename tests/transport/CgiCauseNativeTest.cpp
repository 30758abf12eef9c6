/* What a CGI request says of why its service has not done what it was asked. */
#include "support/Causes.h"
#include "transport/CgiFixture.h"

using namespace std::string_view_literals;

namespace {

class CgiCause : public Cgi {
protected:
    /* Sends, reads a status and an int32, as far as they come, and asks for the cause. */
    DWORD CauseOfExchange() {
        CgiRequest request(host, path, false, false);
        int32_t status = -1;
        int32_t value = 0;
        if (WithCode(request).SendRequest() && request.ReadInt32(status) && status == 0)
            request.ReadInt32(value);
        return request.GetCause(status);
    }
};

}  // namespace

TEST_F(CgiCause, WholeReplyOfStatus0HasNone) {
    Answer("\0\0\0\0abcd"sv);
    EXPECT_EQ(0u, CauseOfExchange());
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}

TEST_F(CgiCause, RequestThatWasNotSentHasItsFirstFailureWhateverTheStatus) {
    EXPECT_EQ(12007u, CauseOfExchange());
    Answer("\0\0\0\0abcd"sv);
    for (const char* function :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        EXPECT_EQ(12004u, CauseOfExchange());
    }
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}

TEST_F(CgiCause, StatusOfTheServiceIsTheCause) {
    Answer("\5\0\0\0abcd"sv);
    EXPECT_EQ(ServiceAnswer(5), CauseOfExchange());
}

TEST_F(CgiCause, RefusalOfTheServerIsTheCauseOfAReplyThatIsNoSuccess) {
    for (const std::string_view body : {"\5\0\0\0"sv, "<html>"sv, ""sv, "\0\0"sv}) {
        WebReply reply = WebReply::WithBody(std::string(body));
        reply.status = 407;
        Answer(std::move(reply));
        EXPECT_EQ(HttpRefusal(407), CauseOfExchange());
    }
}

TEST_F(CgiCause, ReplyThatEndsEarlyHasEndedWhetherOrNotThereIsAStatus) {
    for (const std::string_view body : {""sv, "\0"sv, "\5\0\0"sv, "\0\0\0\0"sv, "\0\0\0\0abc"sv}) {
        Answer(body);
        EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfExchange());
    }
}

TEST_F(CgiCause, BytesOfAFailedReadBelongToTheReply) {
    WebReply reply = WebReply::WithBody(std::string("\0\0\0\0abcd"sv));
    reply.breaks = WebReply::Break::Reset;
    reply.breakAt = 8;
    Answer(reply);
    EXPECT_EQ(0u, CauseOfExchange());
    reply.breakAt = 7;
    Answer(reply);
    EXPECT_EQ(10054u, CauseOfExchange()) << "the byte that is missing is due to the failure";
}

TEST_F(CgiCause, RequestThatNobodyReadHasNone) {
    Answer("\0\0\0\0"sv);
    CgiRequest request(host, path, false, false);
    EXPECT_TRUE(WithCode(request).SendRequest());
    EXPECT_EQ(0u, request.GetCause(0));
}
