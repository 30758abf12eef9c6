/* The program as whoever starts it meets it: arguments, start, end. */
#include <gmock/gmock.h>

#include <fstream>

#include "Database.h"
#include "HttpConnection.h"
#include "LMOnlineVersion.h"
#include "ServiceProcess.h"
#include "TemporaryFolder.h"

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

constexpr std::string_view getPage = "GET / HTTP/1.1\r\nHost: test\r\n\r\n";

class ServiceProgram : public testing::Test {
protected:
    [[nodiscard]] std::string Data() const { return (folder.Path() / "data").string(); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(ServiceProgram, HelpIsPrintedAndNothingElseDone) {
    ServiceProcess service({"--help"});
    EXPECT_EQ(service.WaitForEnd(), 0);
    EXPECT_THAT(service.Output(), StartsWith("Usage: orvande-service --port N --data DIR"));
    EXPECT_EQ(service.Errors(), "");
}

TEST_F(ServiceProgram, VersionIsThatOfTheHeader) {
    ServiceProcess service({"--version"});
    EXPECT_EQ(service.WaitForEnd(), 0);
    EXPECT_EQ(service.Output(), "orvande-service " + std::to_string(LM_ONLINE_VERSION_MAJOR) + "." +
                                    std::to_string(LM_ONLINE_VERSION_MINOR) + "." +
                                    std::to_string(LM_ONLINE_VERSION_PATCH) + "\n");
    EXPECT_EQ(service.Errors(), "");
}

TEST_F(ServiceProgram, BadArgumentsAreOneSentenceAndExitCode2) {
    ServiceProcess service({"--port", "http", "--data", Data()});
    EXPECT_EQ(service.WaitForEnd(), 2);
    EXPECT_EQ(service.Output(), "");
    EXPECT_EQ(service.Errors(), "orvande-service: --port takes a number from 0 to 65535, not 'http'\n");
    EXPECT_FALSE(std::filesystem::exists(Data()));
}

TEST_F(ServiceProgram, Port0TakesAFreePortAndSaysItOnOneLine) {
    ServiceProcess service({"--port", "0", "--data", Data()});
    const int port = service.WaitForPort();
    EXPECT_GT(port, 0);
    EXPECT_EQ(Exchange(port, "GET / HTTP/1.1\r\nConnection: close\r\n\r\n").status, 200);
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Output(), "listening on port " + std::to_string(port) + "\n");
}

TEST_F(ServiceProgram, SigtermEndsIt) {
    ServiceProcess service({"--port", "0", "--data", Data()});
    service.WaitForPort();
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Errors(), "");
}

TEST_F(ServiceProgram, SigintEndsIt) {
    ServiceProcess service({"--port", "0", "--data", Data()});
    service.WaitForPort();
    service.Signal(SIGINT);
    EXPECT_EQ(service.WaitForEnd(), 0);
}

TEST_F(ServiceProgram, SigtermEndsItWhileAClientKeepsItsConnection) {
    ServiceProcess service({"--port", "0", "--data", Data(), "--made-up", "0"});
    HttpConnection connection(service.WaitForPort());
    connection.Send(getPage);
    EXPECT_EQ(connection.ReadReply().status, 200);
    EXPECT_EQ(service.End(), 0);
    EXPECT_TRUE(connection.WaitUntilClosed());
}

TEST_F(ServiceProgram, SigtermCutsARequestThatDoesNotCome) {
    ServiceProcess service({"--port", "0", "--data", Data(), "--made-up", "0"});
    HttpConnection connection(service.WaitForPort());
    connection.Send(
        "POST /cgi-bin/mapstore.cgi HTTP/1.1\r\nContent-Length: 100\r\nExpect: 100-continue\r\n\r\n");
    // The service waits for the body from here on.
    EXPECT_EQ(connection.ReadReply().status, 100);
    connection.Send("half");
    EXPECT_EQ(service.End(), 0);
    EXPECT_EQ(service.Errors(), "connections that are still open are cut\n");
    EXPECT_TRUE(connection.WaitUntilClosed());
}

TEST_F(ServiceProgram, PortInUseIsRefused) {
    ServiceProcess first({"--port", "0", "--data", Data()});
    const std::string port = std::to_string(first.WaitForPort());
    ServiceProcess second({"--port", port, "--data", Data()});
    EXPECT_EQ(second.WaitForEnd(), 1);
    EXPECT_EQ(second.Output(), "");
    EXPECT_EQ(second.Errors(),
              "orvande-service: port " + port + " of 127.0.0.1 cannot be had: Address already in use\n");
    EXPECT_EQ(first.End(), 0);
}

TEST_F(ServiceProgram, PortCanBeTakenAgainAtOnce) {
    ServiceProcess first({"--port", "0", "--data", Data()});
    const int port = first.WaitForPort();
    EXPECT_EQ(Exchange(port, "GET / HTTP/1.1\r\nConnection: close\r\n\r\n").status, 200);
    EXPECT_EQ(first.End(), 0);
    ServiceProcess second({"--port", std::to_string(port), "--data", Data()});
    EXPECT_EQ(second.WaitForPort(), port);
    EXPECT_EQ(second.End(), 0);
}

TEST_F(ServiceProgram, AddressThatIsNoneIsRefused) {
    ServiceProcess service({"--port", "0", "--data", Data(), "--address", "localhost"});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_EQ(service.Errors(), "orvande-service: 'localhost' is not a numeric IP address\n");
}

TEST_F(ServiceProgram, AddressOfAnotherMachineIsRefused) {
    ServiceProcess service({"--port", "0", "--data", Data(), "--address", "192.0.2.1"});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_EQ(service.Errors(),
              "orvande-service: port 0 of 192.0.2.1 cannot be had: Cannot assign requested address\n");
}

TEST_F(ServiceProgram, UnusableDataFolderIsRefused) {
    std::ofstream(Data()) << "a file";
    ServiceProcess service({"--port", "0", "--data", Data()});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_EQ(service.Output(), "");
    EXPECT_THAT(service.Errors(), MatchesRegex("orvande-service: the data folder '.*' cannot be made: .*\n"));
}

TEST_F(ServiceProgram, DamagedDatabaseIsRefused) {
    std::filesystem::create_directory(Data());
    std::ofstream(Data() + "/catalogue.db") << std::string(5000, 'x');
    ServiceProcess service({"--port", "0", "--data", Data()});
    EXPECT_EQ(service.WaitForEnd(), 1);
    EXPECT_THAT(service.Errors(),
                MatchesRegex("orvande-service: the catalogue '.*' cannot be used: file is not a "
                             "database\n"));
}

TEST_F(ServiceProgram, SecondStartKeepsTheData) {
    {
        ServiceProcess first({"--port", "0", "--data", Data()});
        first.WaitForPort();
        EXPECT_EQ(first.End(), 0);
    }
    Database(Data() + "/catalogue.db").Execute("UPDATE map SET name = 'Lusitania' WHERE name = 'Portugal'");
    ServiceProcess second({"--port", "0", "--data", Data()});
    const HttpReply page = Exchange(second.WaitForPort(), getPage);
    EXPECT_THAT(page.body, HasSubstr("<bdi>Lusitania</bdi>"));
    EXPECT_EQ(second.End(), 0);
}

TEST_F(ServiceProgram, OtherContentsThanThoseOfTheFolderAreRefused) {
    {
        ServiceProcess first({"--port", "0", "--data", Data(), "--made-up", "25"});
        first.WaitForPort();
        EXPECT_EQ(first.End(), 0);
    }
    ServiceProcess second({"--port", "0", "--data", Data()});
    EXPECT_EQ(second.WaitForEnd(), 1);
    EXPECT_THAT(second.Errors(),
                HasSubstr("already holds another catalogue (25 made-up maps, not the regions of the "
                          "world); use another data folder\n"));
}
