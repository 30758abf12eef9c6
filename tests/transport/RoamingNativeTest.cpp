/* When the user is asked whether to go on while the phone is roaming. */
#include "transport/NetworkConnection.h"
#include "transport/WebFixture.h"

using namespace std::string_literals;

TEST_F(Web, RoamingIsBit9OfThePhoneStatus) {
    EXPECT_FALSE(IsRoaming()) << "no such value";
    SetPhoneStatus("\0\2\0\0"s);
    EXPECT_TRUE(IsRoaming());
    SetPhoneStatus("\xFF\xFD\xFF\xFF"s);
    EXPECT_FALSE(IsRoaming());
    SetPhoneStatus("\xFF\xFF\xFF\xFF"s);
    EXPECT_TRUE(IsRoaming());
}

TEST_F(Web, WithoutConnectionManagerNoDataConnectionIsAskedFor) {
    Roam();
    WebConnection connection(host, false, false);
    connection.ownerWindow = owner;
    EXPECT_TRUE(connection.Connect());
    EXPECT_FALSE(connection.holdsManagedConnection);
    EXPECT_EQ(0u, device.CountCalls("ConnMgrMapURL"));
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(Web, NotRoamingNoQuestionIsAskedAndNothingAccepted) {
    WebConnection connection(host, true, false);
    connection.ownerWindow = owner;
    EXPECT_TRUE(connection.Connect());
    EXPECT_TRUE(device.MessageBoxes().empty());
    EXPECT_FALSE(roamingWarningAccepted);
}

TEST_F(Web, RoamingIsAskedAboutOnceItHasBeenAccepted) {
    Roam();
    device.AnswerMessageBox(IDOK);
    for (int i = 0; i < 2; ++i) {
        WebConnection connection(host, true, false);
        connection.ownerWindow = owner;
        EXPECT_TRUE(connection.Connect());
    }
    ASSERT_EQ(1u, device.MessageBoxes().size());
    const ShownMessageBox& box = device.MessageBoxes()[0];
    EXPECT_EQ(owner, box.owner);
    EXPECT_EQ(u"Your phone is roaming, and you may incur data charges.", box.text);
    EXPECT_EQ(UINT{MB_OKCANCEL}, box.flags);
    EXPECT_TRUE(roamingWarningAccepted);
}

TEST_F(Web, RefusalIsFinalForTheObjectAndALaterOneAsksAgain) {
    Roam();
    device.AnswerMessageBox(IDCANCEL);
    {
        WebConnection connection(host, true, false);
        connection.ownerWindow = owner;
        EXPECT_FALSE(connection.Connect());
        EXPECT_FALSE(connection.Connect());
        EXPECT_EQ(WebConnection::failed, connection.state);
        EXPECT_FALSE(connection.holdsManagedConnection);
    }
    EXPECT_EQ(1u, device.MessageBoxes().size());
    EXPECT_FALSE(roamingWarningAccepted);
    EXPECT_EQ(0u, device.CountCalls("ConnMgrMapURL"));
    EXPECT_EQ(0u, device.CountCalls("InternetConnectW"));

    device.AnswerMessageBox(IDOK);
    WebConnection later(host, true, false);
    later.ownerWindow = owner;
    EXPECT_TRUE(later.Connect());
    EXPECT_EQ(2u, device.MessageBoxes().size());
}

TEST_F(Web, RoamingWithoutAnOwnerWindowIsNotAskedAbout) {
    Roam();
    WebConnection connection(host, true, false);
    EXPECT_TRUE(connection.Connect());
    EXPECT_TRUE(device.MessageBoxes().empty());
    EXPECT_FALSE(roamingWarningAccepted);
}

TEST_F(Web, OnlyCancelIsARefusal) {
    Roam();
    device.FailCall("MessageBoxW", 1, ERROR_NOT_ENOUGH_MEMORY);
    WebConnection connection(host, true, false);
    connection.ownerWindow = owner;
    EXPECT_TRUE(connection.Connect()) << "the box answers neither OK nor Cancel";
    EXPECT_TRUE(roamingWarningAccepted);
}
