#include "account/SignIn.h"

#include "account/AccountTest.h"

namespace {

constexpr const char16_t* provide = u"You must provide a user name and password to access your account.";
constexpr const char16_t* unknownUser =
    u"The User ID is not correct. If you have lost your ID, click the \"I Forgot\" button. Do not create "
    u"more than "
    u"one account.";
constexpr const char16_t* wrongPassword =
    u"The Password is not correct. If you have lost your password, click the \"I Forgot\" button.";
constexpr const char16_t* problem = u"A problem occured communicating with the server";

class SigningIn : public AccountTest {
protected:
    void SetUp() override {
        AccountTest::SetUp();
        account.userId = TEXT("Anna");
        account.password = TEXT("secret1");
    }

    void ExpectRefusal(std::u16string_view text, UINT flags) {
        ExpectMessage();
        EXPECT_FALSE(SignIn(account, nullptr));
        ASSERT_FALSE(device.MessageBoxes().empty());
        EXPECT_EQ(nullptr, device.MessageBoxes().back().owner);
        ExpectBox(text, flags);
    }
};

}  // namespace

TEST_F(SigningIn, PostsCodeUserIdPasswordAndProductCode) {
    Accept();
    EXPECT_TRUE(SignIn(account, nullptr));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& request = device.Requests()[0];
    EXPECT_EQ(u"POST", request.verb);
    EXPECT_EQ(u"cgi-bin/licapp.cgi", request.path);
    EXPECT_EQ(host, request.host);
    EXPECT_EQ(80, request.port);
    EXPECT_EQ(DWORD{0x00080100}, request.flags);
    EXPECT_EQ(u"ZR_CgiClient-SP", request.agent);
    using namespace std::string_literals;
    EXPECT_EQ(
        "\x08\0\0\0"s
        "\x04\0\0\0A\0n\0n\0a\0"s
        "\x07\0\0\0s\0e\0c\0r\0e\0t\0001\0"s
        "\x04\x03\x02\x01"s,
        request.body);
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(SigningIn, BringsUpADataConnectionAndGivesItUp) {
    Accept();
    EXPECT_TRUE(SignIn(account, nullptr));
    EXPECT_EQ(1u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(1u, device.CountCalls("ConnMgrReleaseConnection"));
}

TEST_F(SigningIn, WithoutUserIdOrPasswordSaysSoAndSendsNothing) {
    account.password.clear();
    ExpectRefusal(provide, MB_ICONINFORMATION);
    account.userId.clear();
    ExpectRefusal(provide, MB_ICONINFORMATION);
    account.password = TEXT("secret1");
    ExpectRefusal(provide, MB_ICONINFORMATION);
    EXPECT_TRUE(device.Requests().empty());
    EXPECT_EQ(0u, device.CountCalls("InternetOpenW"));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrEstablishConnectionSync"));
}

TEST_F(SigningIn, UnknownUserIsTold) {
    Answer(MapShopReply().Int32(4));
    ExpectRefusal(unknownUser, 0);
}

TEST_F(SigningIn, WrongPasswordIsTold) {
    Answer(MapShopReply().Int32(5));
    ExpectRefusal(wrongPassword, 0);
}

TEST_F(SigningIn, ReplyThatEndsAfterTheStatusIsAProblem) {
    Answer(MapShopReply().Int32(0));
    ExpectRefusal(problem, 0);
}

TEST_F(SigningIn, AnythingElseTheServiceMayAnswerIsAProblem) {
    const BadReply replies[] = {
        {"another status", WebReply::WithBody(MapShopReply().Int32(7).Int32(0).bytes)},
        {"status -1", WebReply::WithBody(MapShopReply().Int32(-1).Int32(0).bytes)},
        {"half a status of zeros", WebReply::WithBody(std::string(2, '\0'))},
        {"half a state of zeros", WebReply::WithBody(MapShopReply().Int32(0).bytes + std::string(2, '\0'))},
        {"another state", WebReply::WithBody(MapShopReply().Int32(0).Int32(1).bytes)},
        {"an empty reply", WebReply::WithBody("")},
        {"no reply", WebReply::Nothing()},
        {"a refused connection", WebReply::Refused()},
        {"a connection that times out", WebReply::TimedOut()},
    };
    for (const BadReply& bad : replies) {
        SCOPED_TRACE(bad.name);
        Answer(bad.reply);
        ExpectRefusal(problem, 0);
    }
}

TEST_F(SigningIn, StatusThatCannotBeReadIsAProblemThoughZerosFollow) {
    Accept();
    device.FailCall("InternetReadFile", 1, ERROR_INTERNET_TIMEOUT);
    ExpectRefusal(problem, 0);
}

TEST_F(SigningIn, NothingIsReadOfARequestThatWasNotSent) {
    Answer(WebReply::Refused());
    ExpectRefusal(problem, 0);
    EXPECT_EQ(0u, device.CountCalls("InternetReadFile"));
}

TEST_F(SigningIn, HttpStatusDoesNotMatter) {
    WebReply reply = WebReply::WithBody(MapShopReply().Int32(0).Int32(0).bytes);
    reply.status = 500;
    Answer(reply);
    EXPECT_TRUE(SignIn(account, nullptr));
}

TEST_F(SigningIn, ReplyMayComeByteByByteAndBeLongerThanNeeded) {
    WebReply reply = WebReply::WithBody(MapShopReply().Int32(0).Int32(0).Int32(99).bytes);
    reply.chunks = {1};
    Answer(reply);
    EXPECT_TRUE(SignIn(account, nullptr));
}

TEST_F(SigningIn, MessagesAreTranslated) {
    Translate(
        "You must provide a user name and password to access your account.\tFr1\n"
        "\"The User ID is not correct. If you have lost your ID, click the \"\"I Forgot\"\" button. Do not "
        "create more "
        "than one account.\"\tFr2\n"
        "\"The Password is not correct. If you have lost your password, click the \"\"I Forgot\"\" "
        "button.\"\tFr3\n"
        "A problem occured communicating with the server\tFr4\n");
    Answer(MapShopReply().Int32(4));
    ExpectRefusal(u"Fr2", 0);
    Answer(MapShopReply().Int32(5));
    ExpectRefusal(u"Fr3", 0);
    Answer(MapShopReply().Int32(6));
    ExpectRefusal(u"Fr4", 0);
    account.password.clear();
    ExpectRefusal(u"Fr1", MB_ICONINFORMATION);
}

TEST_F(SigningIn, EveryNetworkCallThatFailsIsAProblemAndNothingStaysOpen) {
    for (const char* function :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW", "InternetReadFile"}) {
        SCOPED_TRACE(function);
        Accept();
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        ExpectRefusal(problem, 0);
        device.StopFailing();
    }
}

TEST_F(SigningIn, OddCredentialsAreSentAsTheyAre) {
    for (const WideString& text :
         {WideString(1, u'x'), WideString(16, u'x'), WideString(17, u'x'), WideString(500, u'x'),
          WideString(TEXT("\xC4\x00DF\x4E2D\xD83D\xDE00\"\n")), WideString(1, u'\xD83D')}) {
        Accept();
        account.userId = text;
        account.password = text;
        EXPECT_TRUE(SignIn(account, nullptr));
        EXPECT_EQ(MapShopReply().Int32(8).Text(text).Text(text).Int32(0x01020304).bytes,
                  device.Requests().back().body);
    }
}
