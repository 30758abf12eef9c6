#include "Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

Options Parsed(const std::vector<const char*>& arguments) {
    return ParseOptions(arguments);
}

std::string Complaint(const std::vector<const char*>& arguments) {
    try {
        ParseOptions(arguments);
    } catch (const OptionError& error) {
        return error.what();
    }
    return "none";
}

}  // namespace

TEST(Options, PortAndDataSuffice) {
    const Options options = Parsed({"--port", "8080", "--data", "folder"});
    EXPECT_FALSE(options.help);
    EXPECT_EQ(options.server.port, 8080);
    EXPECT_EQ(options.server.address, "127.0.0.1");
    EXPECT_EQ(options.dataFolder, "folder");
    EXPECT_EQ(options.madeUpMaps, std::nullopt);
    EXPECT_TRUE(options.server.certificate.empty());
}

TEST(Options, EveryOptionIsTaken) {
    const Options options = Parsed({"--private-key", "k.pem", "--certificate", "c.pem", "--made-up", "25",
                                    "--address", "0.0.0.0", "--data", "d", "--port", "0"});
    EXPECT_EQ(options.server.port, 0);
    EXPECT_EQ(options.server.address, "0.0.0.0");
    EXPECT_EQ(options.server.certificate, "c.pem");
    EXPECT_EQ(options.server.privateKey, "k.pem");
    EXPECT_EQ(options.madeUpMaps, 25);
}

TEST(Options, LastOfTwoCounts) {
    EXPECT_EQ(Parsed({"--port", "1", "--data", "d", "--port", "2"}).server.port, 2);
}

TEST(Options, HelpNeedsNothingElse) {
    EXPECT_TRUE(Parsed({"--help"}).help);
    EXPECT_TRUE(Parsed({"--port", "1", "--help"}).help);
}

TEST(Options, VersionNeedsNothingElse) {
    EXPECT_TRUE(Parsed({"--version"}).version);
    EXPECT_TRUE(Parsed({"--port", "1", "--version"}).version);
    EXPECT_FALSE(Parsed({"--help"}).version);
}

TEST(Options, LimitsOfNumbersAreTaken) {
    EXPECT_EQ(Parsed({"--port", "65535", "--data", "d"}).server.port, 65535);
    EXPECT_EQ(Parsed({"--port", "1", "--data", "d", "--made-up", "0"}).madeUpMaps, 0);
    EXPECT_EQ(Parsed({"--port", "1", "--data", "d", "--made-up", "1000000"}).madeUpMaps, 1000000);
}

TEST(Options, NumbersThatAreNoneOrOutOfRangeAreRefused) {
    for (const char* text : {"65536", "-1", "+1", "8080x", " 1", "0x10", "99999999999", "port"}) {
        EXPECT_EQ(Complaint({"--data", "d", "--port", text}),
                  std::string("--port takes a number from 0 to 65535, not '") + text + "'");
    }
    EXPECT_EQ(Complaint({"--made-up", "1000001"}),
              "--made-up takes a number from 0 to 1000000, not '1000001'");
}

TEST(Options, MissingOptionsAreNamed) {
    EXPECT_EQ(Complaint({}), "--port is missing; --help tells how to call this service");
    EXPECT_EQ(Complaint({"--port", "1"}), "--data is missing; --help tells how to call this service");
}

TEST(Options, MissingValuesAreNamed) {
    EXPECT_EQ(Complaint({"--port", "1", "--data"}), "--data needs a value");
    EXPECT_EQ(Complaint({"--port", "1", "--data", ""}), "--data needs a value");
    EXPECT_EQ(Complaint({"--data", "d", "--port"}), "--port needs a value");
}

TEST(Options, UnknownArgumentsAreNamed) {
    EXPECT_EQ(Complaint({"--prot", "1"}), "unknown argument '--prot'; --help lists those there are");
    EXPECT_EQ(Complaint({"8080"}), "unknown argument '8080'; --help lists those there are");
    EXPECT_EQ(Complaint({"--port", "1", "--data", "d", "more"}),
              "unknown argument 'more'; --help lists those there are");
}

TEST(Options, CertificateAndKeyGoTogether) {
    const std::string complaint = "--certificate and --private-key go together";
    EXPECT_EQ(Complaint({"--port", "1", "--data", "d", "--certificate", "c"}), complaint);
    EXPECT_EQ(Complaint({"--port", "1", "--data", "d", "--private-key", "k"}), complaint);
}
