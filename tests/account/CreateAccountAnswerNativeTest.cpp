/* What the user is told when the service does not create the account. */
#include "account/CreateAccountScreen.h"

TEST_F(CreateAccountScreen, NameThatIsTakenIsTold) {
    ExpectRefusalOfCode(
        2,
        u"This user name is already in use.\nIf this is your account and you have forgotten the User "
        u"ID or Password, click \"Cancel\" and \"I Forgot\" to recover them.");
}

TEST_F(CreateAccountScreen, ShortPasswordIsTold) {
    ExpectRefusalOfCode(3, u"The password must be at least 6 letters or numbers");
}

TEST_F(CreateAccountScreen, EmailThatIsTakenIsToldAndClosesTheDialogAsCancelled) {
    ExpectRefusalOfCode(
        13,
        u"An account already exists with the same email address. Please sign in to that account.\nIf "
        u"you have forgotten the User ID or Password, click \"Forgot\" to recover them.",
        false);
    EXPECT_EQ(TEXT("Anna"), account.userId) << "what was tried stays";
    EXPECT_EQ(TEXT("secret1"), account.password);
}

TEST_F(CreateAccountScreen, BadEmailIsTold) {
    ExpectRefusalOfCode(14, u"You must provide a valid email address.");
}

TEST_F(CreateAccountScreen, AnyOtherCodeIsToldByItsNumber) {
    ExpectRefusalOfCode(7, u"The server returned error code 7");
    ExpectRefusalOfCode(-1, u"The server returned error code -1");
    ExpectRefusalOfCode(1, u"The server returned error code 1");
    ExpectRefusalOfCode(INT32_MIN, u"The server returned error code -2147483648");
}

TEST_F(CreateAccountScreen, TransferThatFailsIsTold) {
    ExpectRefusal(WebReply::Refused(), u"Problem communicating over the internet");
    ExpectRefusal(WebReply::TimedOut(), u"Problem communicating over the internet");
}

TEST_F(CreateAccountScreen, ReplyThatCannotBeReadIsTold) {
    ExpectRefusal(WebReply::WithBody(""), u"Internal server error");
    ExpectRefusal(WebReply::Nothing(), u"Internal server error");
}

TEST_F(CreateAccountScreen, HalfACodeOfZerosIsNoSuccess) {
    ExpectRefusal(WebReply::WithBody(std::string(2, '\0')), u"The server returned error code -65536");
}

TEST_F(CreateAccountScreen, EveryNetworkCallThatFailsIsTold) {
    for (const char* function :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        ExpectRefusalOfCode(0, u"Problem communicating over the internet");
        device.StopFailing();
    }
}

TEST_F(CreateAccountScreen, MessagesAreTranslatedTheCodeIsFilledInAfterwards) {
    Translate("The server returned error code %d\tErreur %d\nThe passwords do not match\tPas pareils\n");
    ExpectRefusalOfCode(7, u"Erreur 7");
    EXPECT_EQ(0u, translationCatalogue.UntranslatedTexts().count(TEXT("The server returned error code 7")));
    EXPECT_FALSE(Run([this](DialogUser& user) {
        user.Type(PASSWORD_FIELD, u"a");
        ExpectMessage();
        user.PressButton(IDOK);
        ExpectBox(u"Pas pareils", 16);
        user.PressButton(IDCANCEL);
    }));
}

TEST_F(CreateAccountScreen, EveryMessageIsShownInTheUsersLanguage) {
    Translate(
        "\"This user name is already in use.\\nIf this is your account and you have forgotten the User ID or "
        "Password, "
        "click \"\"Cancel\"\" and \"\"I Forgot\"\" to recover them.\"\tFr2\n"
        "The password must be at least 6 letters or numbers\tFr3\n"
        "\"An account already exists with the same email address. Please sign in to that account.\\nIf you "
        "have "
        "forgotten the User ID or Password, click \"\"Forgot\"\" to recover them.\"\tFr13\n"
        "You must provide a valid email address.\tFr14\n"
        "Problem communicating over the internet\tFrSend\n"
        "Internal server error\tFrRead\n");
    ExpectRefusalOfCode(2, u"Fr2");
    ExpectRefusalOfCode(3, u"Fr3");
    ExpectRefusalOfCode(13, u"Fr13", false);
    ExpectRefusalOfCode(14, u"Fr14");
    ExpectRefusal(WebReply::Refused(), u"FrSend");
    ExpectRefusal(WebReply::WithBody(""), u"FrRead");
}

TEST_F(CreateAccountScreen, NetworkReadThatFailsIsAReplyThatCannotBeRead) {
    device.FailCall("InternetReadFile", 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
    ExpectRefusalOfCode(0, u"Internal server error");
}

TEST_F(CreateAccountScreen, SecondAttemptStartsFromWhatWasTyped) {
    Answer(MapShopReply().Int32(3));
    EXPECT_TRUE(Run([this](DialogUser& user) {
        Fill(user);
        ExpectMessage();
        user.PressButton(IDOK);
        EXPECT_EQ(u"anna@example.org", user.Text(EMAIL_FIELD));
        EXPECT_EQ(u"*******", user.Text(RETYPE_FIELD));
        Answer(MapShopReply().Int32(0));
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(2u, device.Requests().size());
    EXPECT_EQ(device.Requests()[0].body, device.Requests()[1].body);
}
