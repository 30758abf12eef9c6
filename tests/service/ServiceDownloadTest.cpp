/* What the running service sends of the maps' files. */
#include <fstream>
#include <sstream>

#include "ServiceDownloadFixture.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

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
