/* What the running service sends of the maps' files. */
#include <gmock/gmock.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "HttpConnection.h"
#include "MapFile.h"
#include "ServiceMaps.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const MapFile reunion{"reunion.map", 1105500};
const MapFile california{"california.map", 67108864};

/* One service for all tests that neither change its files nor read its log: its first start takes a second. */
class ServiceDownload : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<TemporaryFolder>();
        service = Started(folder->Path());
        port = service->WaitForPort();
    }

    static void TearDownTestSuite() {
        EXPECT_EQ(service->End(), 0);
        service.reset();
        folder.reset();
    }

    static std::unique_ptr<ServiceProcess> Started(const std::filesystem::path& data) {
        return std::make_unique<ServiceProcess>(
            std::vector<std::string>{"--port", "0", "--data", data.string()});
    }

    /* A request without a body; `headers` is lines with their ends. */
    static HttpReply Ask(const std::string& method, const std::string& target,
                         const std::string& headers = "") {
        return Exchange(port, method + ' ' + target + " HTTP/1.1\r\nHost: test\r\nConnection: close\r\n" +
                                  headers + "\r\n");
    }

    static HttpReply AskRange(const std::string& target, const std::string& range) {
        return Ask("GET", target, "Range: " + range + "\r\n");
    }

    static std::string Bytes(const MapFile& file, uint64_t offset, size_t length) {
        std::string bytes(length, '\0');
        ReadMapFile(file, offset, bytes);
        return bytes;
    }

    static void ExpectUnsatisfiable(const HttpReply& reply) {
        EXPECT_EQ(reply.status, 416);
        EXPECT_EQ(reply.body, "Error 416\n");
    }

    static std::unique_ptr<TemporaryFolder> folder;
    static std::unique_ptr<ServiceProcess> service;
    static int port;
};

std::unique_ptr<TemporaryFolder> ServiceDownload::folder;
std::unique_ptr<ServiceProcess> ServiceDownload::service;
int ServiceDownload::port = 0;

}  // namespace

TEST_F(ServiceDownload, WholeMapIsTheFileInTheFolder) {
    const HttpReply reply = Ask("GET", "/maps/reunion.map");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 1105500\r\n"));
    EXPECT_THAT(reply.headers, HasSubstr("Content-Type: application/octet-stream\r\n"));
    EXPECT_THAT(reply.headers, HasSubstr("Accept-Ranges: bytes\r\n"));
    EXPECT_THAT(reply.headers, Not(HasSubstr("Content-Range")));
    std::ostringstream onDisk;
    onDisk << std::ifstream(folder->Path() / "maps/reunion.map", std::ios::binary).rdbuf();
    EXPECT_TRUE(reply.body == onDisk.str());
    EXPECT_TRUE(reply.body == Bytes(reunion, 0, reunion.size));
}

TEST_F(ServiceDownload, MapOf64MegabytesArrivesWhole) {
    const HttpReply reply = Ask("GET", "/maps/california.map");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body.size(), 67108864u);
    EXPECT_TRUE(reply.body == Bytes(california, 0, california.size));
}

TEST_F(ServiceDownload, RequestLineMayNameTheWholeAddress) {
    const std::string target = "http://online.orvande.example:80/maps/reunion.map";
    EXPECT_TRUE(Ask("GET", target).body == Bytes(reunion, 0, reunion.size));
    const HttpReply part = AskRange(target, "bytes=1000-1009");
    EXPECT_EQ(part.status, 206);
    EXPECT_EQ(part.body, Bytes(reunion, 1000, 10));
}

TEST_F(ServiceDownload, RangeGetsItsBytesAndSaysWhichTheyAre) {
    const HttpReply reply = AskRange("/maps/california.map", "bytes=50000001-50000010");
    EXPECT_EQ(reply.status, 206);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 50000001-50000010/67108864\r\n"));
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 10\r\n"));
    EXPECT_EQ(reply.body, Bytes(california, 50000001, 10));
}

TEST_F(ServiceDownload, RangeOfTheFirstBytesIsNoWholeReply) {
    const HttpReply reply = AskRange("/maps/reunion.map", "bytes=0-9");
    EXPECT_EQ(reply.status, 206);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 0-9/1105500\r\n"));
    EXPECT_EQ(reply.body, "Orvande ma");
}

TEST_F(ServiceDownload, RangeBeyondTheEndEndsWithTheFile) {
    const std::string last = Bytes(reunion, 1105490, 10);
    for (const char* range :
         {"bytes=1105490-1105500", "bytes=1105490-9223372036854775807", "bytes=1105490-", "bytes=-10"}) {
        SCOPED_TRACE(range);
        const HttpReply reply = AskRange("/maps/reunion.map", range);
        EXPECT_EQ(reply.status, 206);
        EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 1105490-1105499/1105500\r\n"));
        EXPECT_EQ(reply.body, last);
    }
}

TEST_F(ServiceDownload, RangeThatBeginsAtTheEndOrBeyondIsUnsatisfiable) {
    for (const char* range : {"bytes=1105500-1105500", "bytes=1105500-", "bytes=4294967296-4294967305",
                              "bytes=9223372036854775807-9223372036854775807", "bytes=-0"}) {
        SCOPED_TRACE(range);
        const HttpReply reply = AskRange("/maps/reunion.map", range);
        ExpectUnsatisfiable(reply);
        EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes */1105500\r\n"));
    }
}

TEST_F(ServiceDownload, RangeThatCannotBeReadIsUnsatisfiable) {
    for (const std::string range :
         {"bytes=5-4", "bytes=-5-4", "bytes=0--1", "bytes=a-b", "lines=0-9", "bytes=18446744073709551616-",
          "bytes=0-18446744073709551616", "bytes=0-3,5-4"}) {
        SCOPED_TRACE(range);
        ExpectUnsatisfiable(AskRange("/maps/reunion.map", range));
    }
    ExpectUnsatisfiable(AskRange("/maps/reunion.map", "bytes=" + std::string(8000, '1') + '-'));
    EXPECT_EQ(AskRange("/maps/reunion.map", "bytes=0-9").status, 206);
}

TEST_F(ServiceDownload, SeveralRangesGetTheWholeMap) {
    const HttpReply reply = AskRange("/maps/reunion.map", "bytes=0-1,3-4");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 1105500\r\n"));
}

TEST_F(ServiceDownload, ConditionOnARangeDoesNotHold) {
    const HttpReply reply = Ask("GET", "/maps/reunion.map", "Range: bytes=0-9\r\nIf-Range: \"tag\"\r\n");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 1105500\r\n"));
}

TEST_F(ServiceDownload, EmptyMapIsAReplyOfNoBytesAndTheConnectionGoesOn) {
    HttpConnection connection(port);
    for (const char* method : {"GET", "HEAD", "GET"}) {
        connection.Send(std::string(method) + " /maps/bouvet-island.map HTTP/1.1\r\n\r\n");
        const HttpReply reply = connection.ReadReply(method == std::string_view("HEAD"));
        EXPECT_EQ(reply.status, 200) << method;
        EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 0\r\n")) << method;
        EXPECT_EQ(reply.body, "");
    }
    connection.Send("GET /maps/bouvet-island.map HTTP/1.1\r\nRange: bytes=0-0\r\n\r\n");
    const HttpReply reply = connection.ReadReply();
    ExpectUnsatisfiable(reply);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes */0\r\n"));
}

TEST_F(ServiceDownload, MapOfOneByteHasOneRange) {
    EXPECT_EQ(Ask("GET", "/maps/rockall.map").body, "O");
    EXPECT_EQ(AskRange("/maps/rockall.map", "bytes=0-0").body, "O");
    EXPECT_EQ(AskRange("/maps/rockall.map", "bytes=1-1").status, 416);
}

TEST_F(ServiceDownload, HeadHasTheLengthOfTheWholeAndNoBody) {
    for (const char* range : {"", "Range: bytes=0-9\r\n"}) {
        HttpConnection connection(port);
        connection.Send(std::string("HEAD /maps/california.map HTTP/1.1\r\nConnection: close\r\n") + range +
                        "\r\n");
        const HttpReply head = connection.ReadReply(true);
        EXPECT_EQ(head.status, 200);
        EXPECT_THAT(head.headers, HasSubstr("Content-Length: 67108864\r\n"));
        EXPECT_THAT(head.headers, HasSubstr("Accept-Ranges: bytes\r\n"));
        EXPECT_TRUE(connection.WaitUntilClosed());
    }
}

TEST_F(ServiceDownload, MapsWithoutAFileAreNotFound) {
    for (const char* path :
         {"/maps/portugal.map", "/maps/none.map", "/maps/REUNION.map", "/maps/", "/maps", "/maps/reunion",
          "/maps/reunion.map/", "/maps//reunion.map", "/x/maps/reunion.map"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Ask("GET", path).status, 404);
        const HttpReply range = AskRange(path, "bytes=100-200");
        EXPECT_EQ(range.status, 404);
        EXPECT_EQ(range.body, "Error 404\n");
        EXPECT_THAT(range.headers, Not(HasSubstr("Content-Range")));
    }
    EXPECT_EQ(Ask("GET", "/maps/" + std::string(7000, 'a') + ".map").status, 404);
}

TEST_F(ServiceDownload, NothingOutsideOfTheFolderIsReached) {
    std::ofstream(folder->Path() / "outside.map") << "secret";
    std::filesystem::create_symlink("../outside.map", folder->Path() / "maps/link.map");
    std::ofstream(folder->Path() / "maps/.hidden.map") << "secret";
    std::filesystem::create_directory(folder->Path() / "maps/below");
    for (const char* path :
         {"/maps/../outside.map", "/maps/%2e%2e/outside.map", "/maps/%2E%2E%2Foutside.map",
          "/maps/..%2foutside.map", "/maps/..%5coutside.map", "/maps/below/../../outside.map",
          "/maps/below%2F..%2F..%2Foutside.map", "/maps/reunion.map/../../outside.map",
          "/maps/%252e%252e/outside.map", "/maps/link.map", "/maps/.hidden.map", "/maps/reunion.map%00",
          "/maps/%00/../outside.map", "/outside.map", "/maps/..", "/maps/../catalogue.db",
          "/maps//etc/passwd"}) {
        SCOPED_TRACE(path);
        for (const char* origin : {"", "http://online.orvande.example", "http://online.orvande.example:80"}) {
            const HttpReply reply = Ask("GET", std::string(origin) + path);
            EXPECT_EQ(reply.status, 404) << origin;
            EXPECT_EQ(reply.body, "Error 404\n") << origin;
        }
    }
}

TEST_F(ServiceDownload, OtherMethodsAreNotAllowed) {
    for (const char* path : {"/maps/reunion.map", "/forgot.htm"}) {
        for (const char* method : {"POST", "PUT", "PATCH", "DELETE"}) {
            const HttpReply reply = Ask(method, path);
            EXPECT_EQ(reply.status, 405) << method << ' ' << path;
            EXPECT_THAT(reply.headers, HasSubstr("Allow: GET, HEAD\r\n")) << method << ' ' << path;
        }
    }
}

TEST_F(ServiceDownload, SeveralDownloadsUseOneConnection) {
    HttpConnection connection(port);
    for (int round = 0; round < 3; ++round) {
        connection.Send("GET /maps/galapagos.map HTTP/1.1\r\n\r\n");
        EXPECT_EQ(connection.ReadReply().body.size(), 706559u);
        connection.Send("GET /maps/reunion.map HTTP/1.1\r\nRange: bytes=5-14\r\n\r\n");
        EXPECT_EQ(connection.ReadReply().body, Bytes(reunion, 5, 10));
    }
}

TEST_F(ServiceDownload, LargeDownloadsAreNotHeldInMemory) {
    std::vector<std::unique_ptr<HttpConnection>> connections;
    for (int count = 0; count < 8; ++count) {
        connections.push_back(std::make_unique<HttpConnection>(port));
        connections.back()->Send("GET /maps/california.map HTTP/1.1\r\nConnection: close\r\n\r\n");
    }
    for (const auto& connection : connections) {
        EXPECT_EQ(connection->ReadReply(true).status, 200);
    }
    EXPECT_LT(service->PeakMemory(), 4 * california.size);
}

TEST_F(ServiceDownload, PageForTheForgottenIsHtmlInUtf8) {
    for (const char* target : {"/forgot.htm", "http://www.orvande.example/forgot.htm"}) {
        const HttpReply page = Ask("GET", target);
        EXPECT_EQ(page.status, 200);
        EXPECT_THAT(page.headers, HasSubstr("Content-Type: text/html; charset=utf-8\r\n"));
        EXPECT_THAT(page.body, StartsWith("<!DOCTYPE html>"));
        EXPECT_THAT(page.body, HasSubstr("<meta charset=\"utf-8\">"));
        EXPECT_THAT(page.body, HasSubstr("Orvande\xE2\x80\x99s reference service"));
        EXPECT_THAT(page.body, EndsWith("</html>\n"));
    }
}

TEST_F(ServiceDownload, RangeOfAPageGetsThePage) {
    const HttpReply whole = Ask("GET", "/forgot.htm");
    const HttpReply reply = AskRange("/forgot.htm", "bytes=0-9");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, whole.body);
}

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
