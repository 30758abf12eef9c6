/* Several transfers over one connection. */
#include "transport/WebDownload.h"
#include "transport/WebFixture.h"

namespace {

class KeptConnection : public Web {
protected:
    void TearDown() override {
        connection.Close();
        Web::TearDown();
    }

    static constexpr WCHAR target[] = TEXT("\\Storage\\file.map");

    bool Download() { return DownloadWebFile(connection, TEXT("/f"), target); }
    int32_t ReadRange(int32_t length) { return ReadWebFileRange(connection, TEXT("/f"), 0, length, buffer); }

    char buffer[8] = {};
    WebConnection connection{host, false, false};
};

}  // namespace

TEST_F(KeptConnection, OpenRequestIsClosedBeforeATransferOpensItsOwn) {
    Answer(WebReply::WithBody("abc"));
    ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    EXPECT_TRUE(Download());
    ASSERT_TRUE(connection.OpenAndSend(TEXT("/"), TEXT("GET"), false));
    EXPECT_EQ(3, ReadRange(3));
    const std::vector<std::string> expected = {
        R"(HttpOpenRequestW(connection 1, "GET", "/", null, null, null, 0x84280900, 0) = request 1)",
        "InternetCloseHandle(request 1) = TRUE",
        R"(HttpOpenRequestW(connection 1, "GET", "/f", null, null, null, 0x84280900, 0) = request 2)",
        "InternetCloseHandle(request 2) = TRUE",
        R"(HttpOpenRequestW(connection 1, "GET", "/", null, null, null, 0x84280900, 0) = request 3)",
        "InternetCloseHandle(request 3) = TRUE",
        R"(HttpOpenRequestW(connection 1, null, "/f", null, null, null, 0x04280100, 0) = request 4)",
        "InternetCloseHandle(request 4) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls({"HttpOpenRequestW", "InternetCloseHandle"}));
}

TEST_F(KeptConnection, RequestIsClosedHoweverATransferEnds) {
    Answer(WebReply::WithBody("abc"));
    EXPECT_TRUE(Download());
    EXPECT_FALSE(connection.request);
    device.FailCall("CreateFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_FALSE(Download());
    EXPECT_FALSE(connection.request);
    device.FailCall("InternetReadFile", 1, ERROR_INTERNET_TIMEOUT);
    EXPECT_FALSE(Download());
    EXPECT_FALSE(connection.request);
    for (const int32_t length : {0, 3, 4}) {
        SCOPED_TRACE(length);
        EXPECT_EQ(length == 3 ? 3 : 0, ReadRange(length));
        EXPECT_FALSE(connection.request);
    }
    EXPECT_EQ(1u, device.CountCalls("InternetConnectW"));
}

TEST_F(KeptConnection, SecureTransfersSayThatTheyAre) {
    Answer(WebReply::WithBody("abc"), 443);
    WebConnection secure(host, false, true);
    EXPECT_TRUE(DownloadWebFile(secure, TEXT("/f"), target));
    EXPECT_EQ(3, ReadWebFileRange(secure, TEXT("/f"), 0, 3, buffer));
    ASSERT_EQ(2u, device.Requests().size());
    EXPECT_EQ(0x84A80900u, device.Requests()[0].flags);
    EXPECT_EQ(0x04A80100u, device.Requests()[1].flags);
    for (const WebRequest& request : device.Requests())
        EXPECT_EQ(443, request.port);
}
