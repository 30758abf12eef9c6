/* Ranged reads with the console program mapshop: what it prints and saves. */
#include "helpers/LocalFiles.h"
#include "helpers/Widened.h"
#include "programs/mapshop/MapshopProgramTest.h"

namespace {

using MapshopRange = MapshopWebTest;

}  // namespace

TEST_F(MapshopRange, IsPrintedInHexadecimal) {
    server.Answer(Content(20));
    const ChildOutcome outcome = Run(L"range /maps/a.map 65 20");
    EXPECT_EQ("", outcome.errors);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ(
        "00000041  00 01 02 03 04 05 06 07  08 09 0a 0b 0c 0d 0e 0f  |................|\n"
        "00000051  10 11 12 13                                       |....|\n",
        outcome.output);
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_EQ("GET http://online.orvande.example:80/maps/a.map HTTP/1.1", requests[0].line);
    EXPECT_EQ("bytes=65-84", requests[0].Header("Range"));
}

TEST_F(MapshopRange, OffsetsHave64Bits) {
    server.Answer("Orvande ~\x7F\x80");
    const ChildOutcome outcome = Run(L"range /maps/a.map 1099511627775 11 --host maps.example");
    EXPECT_EQ("0ffffffffff  4f 72 76 61 6e 64 65 20  7e 7f 80                 |Orvande ~..|\n",
              outcome.output);
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_EQ("GET http://maps.example:80/maps/a.map HTTP/1.1", requests[0].line);
    EXPECT_EQ("bytes=1099511627775-1099511627785", requests[0].Header("Range"));
}

TEST_F(MapshopRange, IsSavedInPlaceOfAnOlderFile) {
    PutFile(PathOf(L"part"), "older, and longer than what comes");
    server.Answer(Content(20));
    const ChildOutcome outcome = Run(L"range /maps/a.map 4294967296 20 part");
    EXPECT_EQ("", outcome.errors);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("20 bytes from byte 4294967296 on saved as part.\n", outcome.output);
    EXPECT_EQ(Content(20), ContentOf(PathOf(L"part")));
    EXPECT_EQ(std::vector<std::wstring>{L"part"}, folder.Names());
}

TEST_F(MapshopRange, RefusedPathLeavesTheOlderFile) {
    PutFile(PathOf(L"part"), "older");
    server.Answer(ConnectionScript{notFound});
    ExpectFailure(
        1,
        "/maps/a.map was not read: online.orvande.example does not have /maps/a.map; check the name (HTTP "
        "404).",
        Run(L"range /maps/a.map 0 20 part"));
    EXPECT_EQ("older", ContentOf(PathOf(L"part")));
}

TEST_F(MapshopRange, ReplyThatIsTooShortIsAFailureAndKeepsNothing) {
    server.Answer(Content(19));
    ExpectFailure(1,
                  "/maps/a.map has no 20 bytes from byte 7 on, or the connection was lost: the reply ended "
                  "early; try again (0x20000003).",
                  Run(L"range /maps/a.map 7 20 part"));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopRange, WrongArgumentsAreNamed) {
    const std::string offset = "OFFSET is a number from 0 to 9223372036854775807 in decimal digits, not ";
    const std::string length = "LENGTH is a number from 1 to 2147483647 in decimal digits, not ";
    ExpectRefusal(2, L"range /a 1", "Wanted is PATH OFFSET LENGTH [FILE]; 2 arguments were given.");
    ExpectRefusal(2, L"range /a 1 2 f x", "Wanted is PATH OFFSET LENGTH [FILE]; 5 arguments were given.");
    ExpectRefusal(2, L"range a 1 2", "'a' is not a path such as /maps/corsica.map: it begins with no slash.");
    for (const char* wrong : {"-1", "", "1x", "0x1", "9223372036854775808", "99999999999999999999"})
        ExpectRefusal(2, L"range /a \"" + Widened(wrong) + L"\" 1", offset + "'" + wrong + "'.");
    for (const char* wrong : {"-1", "0", "", "+1", "2147483648", "4294967297"})
        ExpectRefusal(2, L"range /a 0 \"" + Widened(wrong) + L"\"", length + "'" + wrong + "'.");
    ExpectRefusal(2, L"range /a 9223372036854775807 2", "The range ends beyond byte 9223372036854775807.");
}

TEST_F(MapshopRange, LastByteOfTheLargestFileMayBeAskedFor) {
    server.Answer("x");
    EXPECT_EQ("7fffffffffffffff  78                                                |x|\n",
              Run(L"range /maps/a.map 9223372036854775807 1").output);
}

TEST_F(MapshopRange, TargetThatCannotBeWrittenIsNamedBeforeAnythingIsSent) {
    ExpectRefusal(4, L"range /a 0 1 none\\part",
                  "none\\part cannot be written: its folder does not exist, or its name is too long; name "
                  "another file (3).");
    ASSERT_TRUE(CreateDirectoryW(PathOf(L"folder").c_str(), nullptr));
    ExpectRefusal(4, L"range /a 0 1 folder", "folder is a folder.");
}
