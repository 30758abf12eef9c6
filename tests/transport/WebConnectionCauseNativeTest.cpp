/* What a connection says of why a request of it failed. */
#include "support/Causes.h"
#include "transport/WebDownload.h"
#include "transport/WebFixture.h"

using WebCause = Web;

TEST_F(WebCause, NewConnectionHasNone) {
    WebConnection connection(host, false, false);
    EXPECT_EQ(0u, connection.failure.cause);
    Answer(WebReply::WithBody("abc"));
    EXPECT_TRUE(connection.OpenAndSend(TEXT("/f"), TEXT("GET"), false));
    EXPECT_EQ(0u, connection.failure.cause);
}

TEST_F(WebCause, NextRequestForgetsTheLastOnes) {
    WebConnection connection(host, false, false);
    char buffer[3];
    Answer(WebReply::WithStatus(404));
    EXPECT_EQ(-1, ReadWebFileRange(connection, TEXT("/f"), 0, 3, buffer));
    EXPECT_EQ(HttpRefusal(404), connection.failure.cause);
    Answer(WebReply::WithBody("abc"));
    EXPECT_EQ(3, ReadWebFileRange(connection, TEXT("/f"), 0, 3, buffer));
    EXPECT_EQ(0u, connection.failure.cause);
    EXPECT_EQ(0, ReadWebFileRange(connection, TEXT("/f"), 0, 0, buffer));
    EXPECT_EQ(0u, connection.failure.cause);
}

TEST_F(WebCause, ConnectionThatCouldNotBeMadeKeepsItsCause) {
    WebConnection connection(host, false, false);
    device.FailCall("InternetConnectW", 1, ERROR_INTERNET_OUT_OF_HANDLES);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(connection.OpenAndSend(TEXT("/f"), TEXT("GET"), false));
        EXPECT_EQ(12001u, connection.failure.cause);
    }
}

TEST_F(WebCause, UserWhoRefusesToRoamHasCancelled) {
    Roam();
    device.AnswerMessageBox(IDCANCEL);
    WebConnection roaming(host, true, false);
    roaming.ownerWindow = owner;
    EXPECT_FALSE(roaming.Connect());
    EXPECT_EQ(1223u, roaming.failure.cause);
}
