/* Signing in without a dialog. */
#include "companion/CompanionTest.h"

namespace {

class AccountSigningIn : public CompanionTest {
protected:
    void ExpectRefused(DWORD error) { ExpectFailure(error, LMAccountSignIn(&record)); }

    void TearDown() override {
        EXPECT_TRUE(device.MessageBoxes().empty());
        EXPECT_TRUE(device.Dialogs().empty());
        EXPECT_EQ("no file", SettingsFile());
        CompanionTest::TearDown();
    }

    const LMAccountRecord record = Record(TEXT("Anna"), TEXT("Secret-1"));
};

}  // namespace

TEST_F(AccountSigningIn, SendsTheCredentialsAsTheyAre) {
    Accept();
    ExpectSuccess(LMAccountSignIn(&record));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& request = device.Requests()[0];
    EXPECT_EQ(u"cgi-bin/licapp.cgi", request.path);
    EXPECT_EQ(80, request.port);
    EXPECT_FALSE(request.secure);
    EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("Secret-1")).Int32(0x01020304).bytes,
              request.body);
    EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(AccountSigningIn, UnknownUserIsTold) {
    Answer(MapShopReply().Int32(4));
    ExpectRefused(LM_ERROR_UNKNOWN_USER);
    ExpectRefused(0x22000004);
}

TEST_F(AccountSigningIn, WrongPasswordIsTold) {
    Answer(MapShopReply().Int32(5));
    ExpectRefused(LM_ERROR_WRONG_PASSWORD);
    ExpectRefused(0x22000005);
}

TEST_F(AccountSigningIn, OtherStatusesAreTold) {
    for (const auto& [status, error] :
         {std::pair<int32_t, DWORD>{7, 0x22000007}, {-1, 0x22FFFFFF}, {0x12345678, 0x22345678}}) {
        Answer(MapShopReply().Int32(status).Int32(0));
        ExpectRefused(error);
    }
}

TEST_F(AccountSigningIn, StateOfTheAccountIsTold) {
    for (const auto& [state, error] : {std::pair<int32_t, DWORD>{1, 0x23000001}, {-1, 0x23FFFFFF}}) {
        Answer(MapShopReply().Int32(0).Int32(state));
        ExpectRefused(error);
    }
}

TEST_F(AccountSigningIn, ReplyThatEndsEarlyIsTold) {
    const std::string accepted = MapShopReply().Int32(0).bytes;
    for (const std::string& body :
         {std::string(), std::string(2, '\0'), accepted, accepted + std::string(3, '\0')}) {
        SCOPED_TRACE(body.size());
        Answer(WebReply::WithBody(body));
        ExpectRefused(LM_ERROR_REPLY_ENDED);
    }
}

TEST_F(AccountSigningIn, ServiceThatCannotBeReachedIsTold) {
    Answer(WebReply::Refused());
    ExpectRefused(ERROR_INTERNET_CANNOT_CONNECT);
    Answer(WebReply::TimedOut());
    ExpectRefused(ERROR_INTERNET_TIMEOUT);
}

TEST_F(AccountSigningIn, PageOfAServerThatRefusesIsTold) {
    WebReply reply = WebReply::WithBody("<html>Not here</html>");
    reply.status = 404;
    Answer(reply);
    ExpectRefused(0x21000194);
}

TEST_F(AccountSigningIn, FirstCallThatFailsIsTold) {
    for (const char* function :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW", "InternetReadFile"}) {
        SCOPED_TRACE(function);
        Accept();
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        ExpectRefused(ERROR_GEN_FAILURE);
        device.StopFailing();
    }
}

TEST_F(AccountSigningIn, WithoutUserIdOrPasswordAsksNobody) {
    for (const auto& [userId, password] :
         {std::pair<WideStringView, WideStringView>{{}, {}}, {TEXT("Anna"), {}}, {{}, TEXT("secret1")}}) {
        const LMAccountRecord empty = Record(userId, password);
        ExpectFailure(LM_ERROR_BAD_ARGUMENT, LMAccountSignIn(&empty));
    }
    EXPECT_EQ(0u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_TRUE(device.Requests().empty());
}
