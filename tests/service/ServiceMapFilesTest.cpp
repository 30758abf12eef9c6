/* Services of whose files something is changed, or whose log is read, while they run. */
#include <fstream>

#include "ServiceDownloadFixture.h"
#include "ServiceMaps.h"

using testing::ContainsRegex;
using testing::HasSubstr;

TEST_F(ServiceDownload, ClientThatLeavesIsALineInTheLogAndNothingMore) {
    const TemporaryFolder own;
    const std::unique_ptr<ServiceProcess> left = Started(own.Path());
    const int leftPort = left->WaitForPort();
    {
        HttpConnection connection(leftPort);
        connection.Send("GET /maps/california.map HTTP/1.1\r\n\r\n");
        EXPECT_EQ(connection.ReadReply(true).status, 200);
    }
    EXPECT_EQ(Exchange(leftPort, "GET /maps/rockall.map HTTP/1.1\r\nConnection: close\r\n\r\n").body, "O");
    EXPECT_EQ(left->End(), 0);
    EXPECT_THAT(left->Errors(), HasSubstr("GET /maps/california.map 200 67108864\n"));
    EXPECT_THAT(left->Errors(), ContainsRegex("california.map: broken off after [0-9]+ of 67108864 bytes\n"));
    EXPECT_THAT(left->Errors(), HasSubstr("GET /maps/rockall.map 200 1\n"));
}

TEST_F(ServiceDownload, FileThatIsCutWhileItIsSentEndsTheReplyEarly) {
    const TemporaryFolder own;
    const std::unique_ptr<ServiceProcess> cut = Started(own.Path());
    HttpConnection connection(cut->WaitForPort());
    connection.Send("GET /maps/california.map HTTP/1.1\r\n\r\n");
    EXPECT_EQ(connection.ReadReply(true).status, 200);
    // What the connection holds by itself is far less.
    std::filesystem::resize_file(own.Path() / "maps/california.map", 60000000);
    EXPECT_FALSE(connection.WaitUntilClosed());
    EXPECT_EQ(cut->End(), 0);
    EXPECT_EQ(cut->Errors(),
              "GET /maps/california.map 200 67108864\n"
              "california.map: broken off after 60000000 of 67108864 bytes\n");
}

TEST_F(ServiceDownload, CompleteTransfersAreOneLineEachInTheLog) {
    const TemporaryFolder own;
    PlaceEmptyMaps(own.Path());
    std::ofstream(own.Path() / "maps/own.map") << "my own";
    const std::unique_ptr<ServiceProcess> complete = Started(own.Path());
    HttpConnection connection(complete->WaitForPort());
    for (const char* headers : {"", "Range: bytes=1-3\r\n", "Range: bytes=6-\r\n"}) {
        connection.Send(std::string("GET /maps/own.map HTTP/1.1\r\n") + headers + "\r\n");
        connection.ReadReply();
    }
    connection.Send("HEAD /maps/own.map HTTP/1.1\r\n\r\n");
    connection.ReadReply(true);
    connection.Send("GET /maps/rockall.map HTTP/1.1\r\nConnection: close\r\n\r\n");
    connection.ReadReply();
    EXPECT_EQ(complete->End(), 0);
    EXPECT_EQ(complete->Errors(),
              "GET /maps/own.map 200 6\nGET /maps/own.map 206 3\nGET /maps/own.map 416 10\n"
              "HEAD /maps/own.map 200 6\nGET /maps/rockall.map 200 0\n");
}

TEST_F(ServiceDownload, MadeUpMapsHaveNoFiles) {
    const TemporaryFolder own;
    ServiceProcess madeUp({"--port", "0", "--data", own.Path().string(), "--made-up", "3"});
    EXPECT_EQ(
        Exchange(madeUp.WaitForPort(), "GET /maps/made-up/0000001.map HTTP/1.1\r\nConnection: close\r\n\r\n")
            .status,
        404);
    EXPECT_EQ(madeUp.End(), 0);
    EXPECT_FALSE(std::filesystem::exists(own.Path() / "maps"));
}

TEST_F(ServiceDownload, FilesThatCannotBeMadeAreOneSentenceAndExitCode1) {
    const TemporaryFolder own;
    std::ofstream(own.Path() / "maps") << "a file";
    const std::unique_ptr<ServiceProcess> refused = Started(own.Path());
    EXPECT_EQ(refused->WaitForEnd(), 1);
    EXPECT_EQ(refused->Output(), "");
    EXPECT_THAT(refused->Errors(),
                testing::MatchesRegex("orvande-service: '.*/maps' cannot be [a-z]+: .*\n"));
}
