/* Downloads with the console program mapshop: what it shows and keeps, and what it refuses to begin. */
#include <gmock/gmock.h>

#include "helpers/LocalFiles.h"
#include "programs/mapshop/MapshopProgramTest.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using MapshopDownload = MapshopWebTest;

}  // namespace

TEST_F(MapshopDownload, WithALengthShowsItsQuartersAndWhereItIs) {
    server.Answer(Content(1'000'000));
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("1,000,000 bytes saved as a.map.\n", outcome.output);
    EXPECT_THAT(LinesOf(outcome.errors),
                testing::ElementsAre(StartsWith("25%  "), StartsWith("50%  "), StartsWith("75%  "),
                                     StartsWith("100%  1,000,000 of 1,000,000 bytes")));
    EXPECT_EQ(Content(1'000'000), ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
}

TEST_F(MapshopDownload, WithoutALengthSaysThatItIsUnknown) {
    server.Answer(ConnectionScript{plainHead + Content(100'000)});
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("100,000 bytes saved as a.map.\n", outcome.output);
    EXPECT_THAT(LastLineOf(outcome.errors), StartsWith("100,000 bytes of an unknown length"));
    EXPECT_EQ(Content(100'000), ContentOf(PathOf(L"a.map")));
}

TEST_F(MapshopDownload, BarIsShownWhereItIsAskedFor) {
    server.Answer(Content(100'000));
    const ChildOutcome outcome = Run(L"download --progress bar /maps/a.map a.map");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_THAT(outcome.errors, StartsWith("[------------------------------]  0%  0 of 100,000 bytes"));
    EXPECT_THAT(outcome.errors,
                HasSubstr("[##############################]  100%  100,000 of 100,000 bytes"));
    EXPECT_THAT(outcome.errors, EndsWith("\n"));
}

TEST_F(MapshopDownload, BarOfAnUnknownLengthIsNone) {
    server.Answer(ConnectionScript{plainHead + Content(5000)});
    const ChildOutcome outcome = Run(L"download --progress bar /maps/a.map a.map");
    EXPECT_THAT(outcome.errors, HasSubstr("5,000 bytes of an unknown length"));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("[")));
}

TEST_F(MapshopDownload, EmptyFileIsComplete) {
    server.Answer("");
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("0 bytes saved as a.map.\n", outcome.output);
    EXPECT_EQ("100%  0 of 0 bytes\n", outcome.errors);
    EXPECT_EQ("", ContentOf(PathOf(L"a.map")));
}

TEST_F(MapshopDownload, FileNameOfAnyScriptIsKept) {
    server.Answer("x");
    const ChildOutcome outcome = Run(L"download /maps/a.map \"\u039A\u03C1\u03AE\u03C4\u03B7 1.map\"");
    EXPECT_EQ("1 byte saved as \xCE\x9A\xCF\x81\xCE\xAE\xCF\x84\xCE\xB7 1.map.\n", outcome.output);
    EXPECT_EQ("x", ContentOf(PathOf(L"\u039A\u03C1\u03AE\u03C4\u03B7 1.map")));
}

TEST_F(MapshopDownload, PathIsAskedOfTheServicesHostOrOfTheOneNamed) {
    Run(L"download /maps/a.map a.map");
    Run(L"download /maps/a.map --host maps.example a.map");
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ("GET http://online.orvande.example:80/maps/a.map HTTP/1.1", requests[0].line);
    EXPECT_EQ("GET http://maps.example:80/maps/a.map HTTP/1.1", requests[1].line);
}

TEST_F(MapshopDownload, WrongArgumentsAreNamed) {
    ExpectRefusal(2, L"download", "Wanted is PATH FILE; 0 arguments were given.");
    ExpectRefusal(2, L"download /a", "Wanted is PATH FILE; 1 argument was given.");
    ExpectRefusal(2, L"download /a b c", "Wanted is PATH FILE; 3 arguments were given.");
    ExpectRefusal(2, L"download a b",
                  "'a' is not a path such as /maps/corsica.map: it begins with no slash.");
    ExpectRefusal(2, L"download /a b --host", "--host has no value; see mapshop --help.");
    ExpectRefusal(2, L"download /a b --host \"\"",
                  "'' is not the name of a host such as online.orvande.example.");
    ExpectRefusal(2, L"download /a b --host http://h",
                  "'http://h' is not the name of a host such as online.orvande.example.");
    ExpectRefusal(2, L"download /a b --progress", "--progress has no value; see mapshop --help.");
    ExpectRefusal(2, L"download /a b --progress dots", "--progress is bar or lines, not 'dots'.");
    ExpectRefusal(2, L"download /a b --quiet", "There is no option '--quiet'; see mapshop --help.");
}

TEST_F(MapshopDownload, TargetThatCannotBeWrittenIsNamedBeforeAnythingIsSent) {
    ExpectRefusal(4, L"download /a none\\a.map",
                  "none\\a.map.TMP cannot be written: its folder does not exist, or its name is too long; "
                  "name another file (3).");
    ASSERT_TRUE(CreateDirectoryW(PathOf(L"folder").c_str(), nullptr));
    ExpectRefusal(4, L"download /a folder", "folder is a folder.");
    ASSERT_TRUE(CreateDirectoryW(PathOf(L"b.map.TMP").c_str(), nullptr));
    ExpectRefusal(4, L"download /a b.map", "b.map.TMP is a folder.");
}

TEST_F(MapshopDownload, ReadOnlyTargetStays) {
    const std::wstring path = PathOf(L"a.map");
    PutFile(path, "older");
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectRefusal(4, L"download /a a.map", "a.map is read-only.");
    EXPECT_EQ("older", ContentOf(path));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(MapshopDownload, TargetThatIsOpenElsewhereStays) {
    const std::wstring path = PathOf(L"a.map");
    PutFile(path, "older");
    const HANDLE open =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ExpectRefusal(4, L"download /a a.map",
                  "a.map cannot be written: another program has it open; close it there (32).");
    CloseHandle(open);
    EXPECT_EQ("older", ContentOf(path));
}
