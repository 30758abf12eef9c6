/* What the running service answers, request by request, over a real socket. */
#include <gmock/gmock.h>

#include "Database.h"
#include "HttpConnection.h"
#include "ServiceMaps.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"
#include "WireBytes.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* mapStore = "/cgi-bin/mapstore.cgi";

class ServiceHttp : public testing::Test {
protected:
    /* Without files for the maps; the service is started after them. */
    [[nodiscard]] std::string PreparedData() const {
        PlaceEmptyMaps(Data());
        return Data();
    }

    [[nodiscard]] std::string Data() const { return (folder.Path() / "data").string(); }

    /* A request without a body. */
    [[nodiscard]] HttpReply Ask(const std::string& method, const std::string& target) const {
        return Exchange(port, method + ' ' + target + " HTTP/1.1\r\nHost: test\r\nConnection: close\r\n\r\n");
    }

    [[nodiscard]] HttpReply Post(std::string_view target, std::string_view body) const {
        return Exchange(port, PostRequest(target, body));
    }

    /* Ends the service; gives its log. */
    std::string Log() {
        EXPECT_EQ(service.End(), 0);
        return service.Errors();
    }

    TemporaryFolder folder;
    ServiceProcess service{{"--port", "0", "--data", PreparedData()}};
    int port = service.WaitForPort();
};

}  // namespace

TEST_F(ServiceHttp, SearchOfABoxFindsTheRegionsThere) {
    // Around Lisbon.
    const HttpReply reply = Post(mapStore, SearchBytes({{3870000, -920000, 3875000, -910000}}));
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Type: application/octet-stream\r\n"));
    EXPECT_THAT(reply.body,
                StartsWith(Int32Bytes(0) + Int32Bytes(1) + Int32Bytes(4) + TextBytes(u"Portugal")));
    EXPECT_THAT(reply.body, HasSubstr(TextBytes(u"/maps/portugal.map")));
}

TEST_F(ServiceHttp, TextBeyondAsciiTravelsAsUtf16) {
    // Around Paris.
    const HttpReply reply = Post(mapStore, SearchBytes({{4880000, 230000, 4890000, 240000}}));
    EXPECT_THAT(reply.body,
                StartsWith(Int32Bytes(0) + Int32Bytes(1) + Int32Bytes(4) + TextBytes(u"\u00CEle-de-France")));
}

TEST_F(ServiceHttp, RequestLineMayNameTheWholeAddress) {
    const std::string request = SearchBytes({{3870000, -920000, 3875000, -910000}});
    const HttpReply plain = Post(mapStore, request);
    for (const char* origin : {"http://online.orvande.example:80", "http://online.orvande.example",
                               "https://online.orvande.example:443"}) {
        SCOPED_TRACE(origin);
        const HttpReply reply = Post(std::string(origin) + mapStore, request);
        EXPECT_EQ(reply.status, 200);
        EXPECT_EQ(reply.body, plain.body);
        EXPECT_EQ(Ask("GET", std::string(origin) + "/").status, 200);
        EXPECT_EQ(Ask("GET", origin).status, 200);
        EXPECT_EQ(Ask("GET", std::string(origin) + "/elsewhere").status, 404);
    }
}

TEST_F(ServiceHttp, MalformedSearchGetsAStatusAndALineInTheLog) {
    const HttpReply reply = Post(mapStore, "hello");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, Int32Bytes(1));
    EXPECT_EQ(Log(),
              "mapstore.cgi: refused with status 1: a body of 5 bytes\nPOST /cgi-bin/mapstore.cgi 200 4\n");
}

TEST_F(ServiceHttp, SearchWithoutABodyIsMalformed) {
    const HttpReply reply = Ask("POST", mapStore);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, Int32Bytes(1));
}

TEST_F(ServiceHttp, SearchThatIsAFormIsMalformed) {
    const std::string form = "--x\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\nb\r\n--x--\r\n";
    const HttpReply reply =
        Exchange(port,
                 "POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nContent-Type: multipart/form-data; boundary=x\r\n"
                 "Content-Length: " +
                     std::to_string(form.size()) + "\r\nConnection: close\r\n\r\n" + form);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, Int32Bytes(1));
}

TEST_F(ServiceHttp, BodyInChunksIsTaken) {
    const HttpReply reply = Exchange(
        port, std::string("POST /cgi-bin/mapstore.cgi HTTP/1.1\r\n"
                          "Transfer-Encoding: chunked\r\nConnection: close\r\n\r\n"
                          "3\r\n") +
                  SearchBytes({}).substr(0, 3) + "\r\n5\r\n" + SearchBytes({}).substr(3) + "\r\n0\r\n\r\n");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.body, StartsWith(Int32Bytes(0)));
}

TEST_F(ServiceHttp, BodyOfMoreThanAMegabyteIsRefusedAndTheConnectionGoesOn) {
    HttpConnection connection(port);
    const std::string body(1048577, '\0');
    connection.Send("POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nContent-Length: 1048577\r\n\r\n" + body);
    EXPECT_EQ(connection.ReadReply().status, 413);
    connection.Send("POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n100001\r\n" +
                    body + "\r\n0\r\n\r\n");
    EXPECT_EQ(connection.ReadReply().status, 413);
    connection.Send("POST /elsewhere HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n100001\r\n" + body +
                    "\r\n0\r\n\r\n");
    EXPECT_EQ(connection.ReadReply().status, 413);
    connection.Send(PostRequest(mapStore, "x"));
    EXPECT_EQ(connection.ReadReply().body, Int32Bytes(1));
}

TEST_F(ServiceHttp, SeveralRequestsUseOneConnection) {
    HttpConnection connection(port);
    for (int round = 0; round < 20; ++round) {
        connection.Send("POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nContent-Length: 8\r\n\r\n" + SearchBytes({}));
        ASSERT_THAT(connection.ReadReply().body, StartsWith(Int32Bytes(0)));
    }
    connection.Send("GET / HTTP/1.1\r\nConnection: close\r\n\r\n");
    EXPECT_EQ(connection.ReadReply().status, 200);
    EXPECT_TRUE(connection.WaitUntilClosed());
}

TEST_F(ServiceHttp, PageListsTheCatalogue) {
    const HttpReply page = Ask("GET", "/");
    EXPECT_EQ(page.status, 200);
    EXPECT_THAT(page.headers, HasSubstr("Content-Type: text/html; charset=utf-8\r\n"));
    EXPECT_THAT(page.body, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page.body, HasSubstr("<bdi>Portugal</bdi>"));
    EXPECT_THAT(page.body, HasSubstr("<bdi>\xC3\x8Ele-de-France</bdi>"));
    EXPECT_THAT(page.body, HasSubstr("<bdi>C\xC3\xB4te d&#39;Ivoire</bdi>"));
    EXPECT_THAT(page.body, EndsWith("</html>\n"));
}

TEST_F(ServiceHttp, PageEscapesWhatTheCatalogueHolds) {
    Database(Data() + "/catalogue.db").Execute("UPDATE map SET description = '<script>1</script>'");
    const HttpReply page = Ask("GET", "/");
    EXPECT_THAT(page.body, HasSubstr("&lt;script&gt;1&lt;/script&gt;"));
    EXPECT_THAT(page.body, Not(HasSubstr("<script>")));
}

TEST_F(ServiceHttp, HeadOfThePageHasItsLengthAndNoBody) {
    const std::string length = "Content-Length: " + std::to_string(Ask("GET", "/").body.size()) + "\r\n";
    HttpConnection connection(port);
    connection.Send("HEAD / HTTP/1.1\r\nConnection: close\r\n\r\n");
    const HttpReply head = connection.ReadReply(true);
    EXPECT_EQ(head.status, 200);
    EXPECT_THAT(head.headers, HasSubstr(length));
    EXPECT_TRUE(connection.WaitUntilClosed());
}

TEST_F(ServiceHttp, QueryDoesNotChangeThePath) {
    EXPECT_EQ(Ask("GET", "/?x=1").status, 200);
    EXPECT_EQ(Post(std::string(mapStore) + "?x=1", SearchBytes({})).status, 200);
}

TEST_F(ServiceHttp, OtherPathsAreNotFound) {
    for (const char* path : {"/index.html", "/cgi-bin/", "/cgi-bin/mapstore.cgi/", "/cgi-bin/mapstoreXcgi",
                             "//cgi-bin/mapstore.cgi", "/x/cgi-bin/mapstore.cgi", "/maps/", "/forgotXhtm",
                             "/../../etc/passwd"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Ask("GET", path).status, 404);
        EXPECT_EQ(Post(path, SearchBytes({})).status, 404);
        EXPECT_EQ(Ask("DELETE", path).status, 404);
    }
}

TEST_F(ServiceHttp, OtherMethodsOfTheSearchAreNotAllowed) {
    for (const char* method : {"GET", "HEAD", "PUT", "PATCH", "DELETE"}) {
        const HttpReply reply = Ask(method, mapStore);
        EXPECT_EQ(reply.status, 405) << method;
        EXPECT_THAT(reply.headers, HasSubstr("Allow: POST\r\n")) << method;
    }
}

TEST_F(ServiceHttp, OtherMethodsOfThePageAreNotAllowed) {
    for (const char* method : {"POST", "PUT", "PATCH", "DELETE"}) {
        const HttpReply reply = Ask(method, "/");
        EXPECT_EQ(reply.status, 405) << method;
        EXPECT_THAT(reply.headers, HasSubstr("Allow: GET, HEAD\r\n")) << method;
    }
}

TEST_F(ServiceHttp, VeryLongTargetsAreNotFoundOrTooLong) {
    EXPECT_EQ(Ask("GET", '/' + std::string(8000, 'a')).status, 404);
    EXPECT_EQ(Ask("PUT", '/' + std::string(8000, 'a')).status, 404);
    EXPECT_EQ(Ask("GET", "http://" + std::string(8000, 'a') + "/b").status, 404);
    EXPECT_EQ(Ask("GET", "http://" + std::string(8000, 'a') + '/').status, 200);
    EXPECT_EQ(Ask("GET", '/' + std::string(100000, 'a')).status, 414);
}

TEST_F(ServiceHttp, LinesThatAreNoRequestAreRefused) {
    for (const char* request : {"hello\r\n\r\n", "GET /\r\n\r\n", "FETCH / HTTP/1.1\r\n\r\n",
                                "GET / HTTP/9.9\r\n\r\n", "PRI / HTTP/1.1\r\n\r\n"}) {
        EXPECT_EQ(Exchange(port, request).status, 400) << request;
    }
}

TEST_F(ServiceHttp, EveryRequestIsALineInTheLog) {
    HttpConnection connection(port);
    connection.Send("POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nContent-Length: 8\r\n\r\n" + SearchBytes({}));
    const size_t size = connection.ReadReply().body.size();
    connection.Send("GET /none HTTP/1.1\r\n\r\n");
    connection.ReadReply();
    connection.Send("GET /a%0Ab HTTP/1.1\r\nConnection: close\r\n\r\n");
    connection.ReadReply();
    EXPECT_EQ(Log(), "POST /cgi-bin/mapstore.cgi 200 " + std::to_string(size) +
                         "\nGET /none 404 10\nGET /a\\x0ab 404 10\n");
}

TEST_F(ServiceHttp, FailureOfTheDatabaseIsAStatusOfTheSearchAndAnErrorOfThePage) {
    Database(Data() + "/catalogue.db").Execute("DROP TABLE map");
    EXPECT_EQ(Post(mapStore, SearchBytes({})).body, Int32Bytes(6));
    EXPECT_EQ(Ask("GET", "/").status, 500);
    EXPECT_THAT(Log(), HasSubstr("request failed: no such table: map\n"));
}
