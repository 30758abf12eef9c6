/* What the console program mapshop says. */
#include <gmock/gmock.h>

#include "LMOnlineVersion.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "programs/mapshop/MapshopProgramTest.h"
#include "support/MapShopReply.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class Mapshop : public MapshopProgramTest {
protected:
    /* Runs the program from the test's own folder. */
    [[nodiscard]] ChildOutcome RunCopy() const {
        return RunChild(L"\"" + PathOf(L"mapshop.exe") + L"\" search", folder.Path());
    }

    /* Copies a file of the program's folder to the test's. */
    void Copy(const std::wstring& from, const std::wstring& to) const {
        ASSERT_TRUE(CopyFileW((ProgramFolder() + L"\\" + from).c_str(), PathOf(to).c_str(), TRUE));
    }
};

using MapshopSearch = MapshopWebTest;

}  // namespace

TEST_F(Mapshop, HelpShowsHowItIsCalled) {
    for (const wchar_t* arguments : {L"--help", L"-h", L"search --help"}) {
        const ChildOutcome outcome = Run(arguments);
        EXPECT_EQ(0U, outcome.exitCode);
        EXPECT_THAT(outcome.output, StartsWith("Usage: mapshop search [SOUTH WEST NORTH EAST]...\n"));
        EXPECT_EQ("", outcome.errors);
    }
}

TEST_F(Mapshop, VersionIsThatOfTheHeader) {
    const ChildOutcome outcome = Run(L"--version");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("mapshop " + std::to_string(LM_ONLINE_VERSION_MAJOR) + "." +
                  std::to_string(LM_ONLINE_VERSION_MINOR) + "." + std::to_string(LM_ONLINE_VERSION_PATCH) +
                  "\n",
              outcome.output);
    EXPECT_EQ("", outcome.errors);
}

TEST_F(Mapshop, WrongArgumentsAreNamed) {
    const struct {
        const wchar_t* arguments;
        const char* message;
    } cases[] = {
        {L"", "No command is given; see mapshop --help."},
        {L"find", "There is no command 'find'; see mapshop --help."},
        {L"search 1", "A box has four numbers, SOUTH WEST NORTH EAST; 1 was given."},
        {L"search 1 2 3 4 5", "A box has four numbers, SOUTH WEST NORTH EAST; 5 were given."},
        {L"search 1 2 3 4E", "'4E' is not a number of degrees such as 47.5 (east)."},
        {L"search 1e1 2 3 4", "'1e1' is not a number of degrees such as 47.5 (south)."},
        {L"search 0x1 2 3 4", "'0x1' is not a number of degrees such as 47.5 (south)."},
        {L"search 1 nan 3 4", "'nan' is not a number of degrees such as 47.5 (west)."},
        {L"search 1 2 3,5 4", "'3,5' is not a number of degrees such as 47.5 (north)."},
        {L"search 1 \"\" 3 4", "'' is not a number of degrees such as 47.5 (west)."},
        {L"search 1 - 3 4", "'-' is not a number of degrees such as 47.5 (west)."},
        {L"search 1 . 3 4", "'.' is not a number of degrees such as 47.5 (west)."},
        {L"search +-1 2 3 4", "'+-1' is not a number of degrees such as 47.5 (south)."},
        {L"search 1 2 3 \u00B54",
         "'\xC2\xB5"
         "4' is not a number of degrees such as 47.5 (east)."},
        {L"search -90.00001 2 3 4", "-90.00001 is out of range: south lies between -90 and 90 degrees."},
        {L"search 1 180.00001 3 4", "180.00001 is out of range: west lies between -180 and 180 degrees."},
        {L"search 1 2 91 4", "91 is out of range: north lies between -90 and 90 degrees."},
        {L"search 1 2 3 99999999999999999999",
         "99999999999999999999 is out of range: east lies between -180 and 180 degrees."},
        {L"search 3.1 2 3 4", "South (3.1) is greater than north (3)."},
    };
    for (const auto& wrong : cases) {
        SCOPED_TRACE(wrong.message);
        ExpectFailure(2, wrong.message, Run(wrong.arguments));
    }
}

TEST_F(Mapshop, MissingDllIsNamedWithItsPlace) {
    Copy(L"mapshop.exe", L"mapshop.exe");
    const ChildOutcome outcome = RunCopy();
    EXPECT_EQ(3U, outcome.exitCode);
    EXPECT_THAT(outcome.errors,
                StartsWith("mapshop: OrvandeOnline.dll is missing: it belongs beside this program, as "));
    EXPECT_THAT(outcome.errors, HasSubstr("\\OrvandeOnline.dll.\n"));
}

TEST_F(Mapshop, FileThatIsNoDllIsNamed) {
    Copy(L"mapshop.exe", L"mapshop.exe");
    PutFile(PathOf(L"OrvandeOnline.dll"), "text");
    const ChildOutcome outcome = RunCopy();
    EXPECT_EQ(3U, outcome.exitCode);
    EXPECT_THAT(outcome.errors, HasSubstr("\\OrvandeOnline.dll cannot be loaded (Windows error "));
}

TEST_F(Mapshop, DllWithoutTheFunctionsIsNamed) {
    Copy(L"mapshop.exe", L"mapshop.exe");
    Copy(L"cellcore.dll", L"OrvandeOnline.dll");
    const ChildOutcome outcome = RunCopy();
    EXPECT_EQ(3U, outcome.exitCode);
    EXPECT_THAT(outcome.errors,
                HasSubstr("\\OrvandeOnline.dll has no function LMMapShopSearch: it is another library"));
}

TEST_F(Mapshop, FilesThatTheDllNeedsAreNamed) {
    Copy(L"mapshop.exe", L"mapshop.exe");
    Copy(L"OrvandeOnline.dll", L"OrvandeOnline.dll");
    const ChildOutcome outcome = RunCopy();
    EXPECT_EQ(3U, outcome.exitCode);
    EXPECT_THAT(outcome.errors,
                HasSubstr("OrvandeOnline.dll cannot be loaded: aygshell.dll or cellcore.dll"));
}

TEST_F(MapshopSearch, ResultsAreATable) {
    server.Answer(MapShopReply()
                      .Int32(0)
                      .Int32(2)
                      .Map(L"Crete (\u039A\u03C1\u03AE\u03C4\u03B7)", 1234567, L"/maps/crete.map",
                           L"An island\nin the sea")
                      .Map(L"Alps", -20, L"/maps/the-alps.map", L"")
                      .Int32(38)
                      .bytes);
    const ChildOutcome outcome = Run(L"search");
    EXPECT_EQ("", outcome.errors);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ(
        "NAME                   SIZE  PATH                DESCRIPTION\n"
        "-------------  ------------  ------------------  --------------------\n"
        "Crete (\xCE\x9A\xCF\x81\xCE\xAE\xCF\x84\xCE\xB7)  1,234,567 KB  /maps/crete.map     An island in "
        "the sea\n"
        "Alps                 -20 KB  /maps/the-alps.map\n"
        "\n"
        "2 maps found; 38 maps in the catalogue.\n",
        outcome.output);
}

TEST_F(MapshopSearch, LongTextsAreBrokenAtSpaces) {
    const std::wstring description =
        L"one two three four five six seven eight nine ten eleven twelve thirteen fourteen";
    server.Answer(MapShopReply()
                      .Int32(0)
                      .Int32(1)
                      .Map(L"A name that is much longer than most", 1, L"/maps/a.map", description)
                      .Int32(1)
                      .bytes);
    const ChildOutcome outcome = Run(L"search");
    EXPECT_EQ(
        "NAME                          SIZE  PATH         DESCRIPTION\n"
        "----------------------------  ----  -----------  "
        "---------------------------------------------------\n"
        "A name that is much longer    1 KB  /maps/a.map  one two three four five six seven eight nine ten\n"
        "than most                                        eleven twelve thirteen fourteen\n"
        "\n"
        "1 map found; 1 map in the catalogue.\n",
        outcome.output);
}

TEST_F(MapshopSearch, OneMapIsCountedAsOne) {
    server.Answer(MapShopReply().Int32(0).Int32(1).Map(L"Alps", 1, L"/a", L"b").Int32(1).bytes);
    EXPECT_THAT(Run(L"search").output, testing::EndsWith("\n\n1 map found; 1 map in the catalogue.\n"));
}

TEST_F(MapshopSearch, NoResultsAreAnAnswer) {
    server.Answer(MapShopReply().Int32(0).Int32(0).Int32(7).bytes);
    const ChildOutcome outcome = Run(L"search");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("No maps found; 7 maps in the catalogue.\n", outcome.output);
}

TEST_F(MapshopSearch, NoAnswerIsAFailure) {
    server.Answer(ConnectionScript{""});
    ExpectFailure(1, "The search brought nothing: the reply ended early; try again (0x20000003).",
                  Run(L"search"));
}

TEST_F(MapshopSearch, EmptyCatalogueIsAnAnswer) {
    server.Answer(MapShopReply().Int32(0).Int32(0).Int32(0).bytes);
    const ChildOutcome outcome = Run(L"search");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("No maps found; 0 maps in the catalogue.\n", outcome.output);
}

TEST_F(MapshopSearch, RefusalIsAFailureWithItsStatus) {
    server.Answer(MapShopReply().Int32(9).bytes);
    ExpectFailure(1,
                  "The search brought nothing: the service refused; try again later, or ask who runs "
                  "online.orvande.example (status 9).",
                  Run(L"search"));
    server.Answer(ConnectionScript{notFound});
    ExpectFailure(1,
                  "The search brought nothing: online.orvande.example does not have the map shop; check the "
                  "name (HTTP 404).",
                  Run(L"search"));
}

TEST_F(MapshopSearch, ResultsOfAnAnswerThatBrokeOffAreListedAndItIsAFailure) {
    server.Answer(MapShopReply().Int32(0).Int32(2).Map(L"Alps", 1, L"/a", L"b").Int32(4).bytes);
    const ChildOutcome outcome = Run(L"search");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ(
        "NAME  SIZE  PATH  DESCRIPTION\n"
        "----  ----  ----  -----------\n"
        "Alps  1 KB  /a    b\n",
        outcome.output);
    EXPECT_EQ("mapshop: These are not all maps: the reply ended early; try again (0x20000003).\n",
              outcome.errors);
}

TEST_F(MapshopSearch, BoxesAreSentInUnitsOf1e5Degrees) {
    Run(L"search 45.8 5.95613 47.9 +10.5 -90 180 -.000014 -180.0");
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    MapShopReply expected;
    expected.Int32(101).Int32(2);
    for (const int32_t edge : {4580000, 595613, 4790000, 1050000, -9000000, 18000000, -1, -18000000}) {
        expected.Int32(edge);
    }
    EXPECT_EQ(expected.bytes, requests[0].body);
}
