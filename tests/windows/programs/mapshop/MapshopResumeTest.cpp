/* Downloads with the console program mapshop that go on where they broke off. */
#include <gmock/gmock.h>

#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/TestServices.h"
#include "programs/mapshop/MapshopProgramTest.h"

using testing::AllOf;
using testing::EndsWith;
using testing::StartsWith;

namespace {

/* With the reference service. */
class MapshopResume : public MapshopProgramTest {
    WebProxy proxy{PortTold("ORVANDE_TEST_MAPS_PORT")};
};

using MapshopResumeElsewhere = MapshopWebTest;
using MapshopResumeUnreached = MapshopProgramTest;

constexpr wchar_t command[] = L"download --resume /maps/galapagos.map a.map";

}  // namespace

TEST_F(MapshopResume, GoesOnAfterItWasKilled) {
    PutFile(PathOf(L"a.map"), "older");
    const std::wstring line = L"\"" + ProgramFolder() + L"\\mapshop.exe\" " + command;
    EXPECT_TRUE(
        KillChild(line, folder.Path(), [&] { return SizeOfFile(PathOf(L"a.map.part")) > 3 * 65536; }));
    EXPECT_EQ("older", ContentOf(PathOf(L"a.map")));
    const ChildOutcome outcome = Run(command);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_THAT(outcome.output,
                AllOf(StartsWith("706,559 bytes saved as a.map, "), EndsWith(" of them from before.\n")));
    EXPECT_THAT(LastLineOf(outcome.errors), StartsWith("100%  706,559 of 706,559 bytes"));
    EXPECT_EQ(0U, Run(L"download /maps/galapagos.map whole.map").exitCode);
    EXPECT_TRUE(ContentOf(PathOf(L"whole.map")) == ContentOf(PathOf(L"a.map")));
    EXPECT_EQ((std::vector<std::wstring>{L"a.map", L"whole.map"}), folder.Names());
}

TEST_F(MapshopResume, RefusalSaysThatNothingWasDownloaded) {
    const ChildOutcome outcome = Run(L"download /maps/none.map a.map --resume");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ(
        "mapshop: a.map was not downloaded: online.orvande.example does not have /maps/none.map; check the "
        "name (HTTP 404).\n",
        outcome.errors);
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopResumeUnreached, BrokenOffSaysHowItGoesOn) {
    PutFile(PathOf(L"a.map.part"), "from before");
    const ClosedPort closed;
    const WebProxy nobody(closed.Number());
    const ChildOutcome outcome = Run(command);
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_THAT(outcome.errors,
                StartsWith("mapshop: The download of a.map broke off, and the same command goes on with "
                           "a.map.part: online.orvande.example cannot be reached; "));
    EXPECT_EQ("from before", ContentOf(PathOf(L"a.map.part")));
}

TEST_F(MapshopResumeElsewhere, ServerThatKnowsNoPartsSendsTheFileWhole) {
    server.Answer(Content(100'000));
    const ChildOutcome outcome = Run(command);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("100,000 bytes saved as a.map.\n", outcome.output);
    EXPECT_TRUE(Content(100'000) == ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
}

TEST_F(MapshopResumeElsewhere, WhatCannotBeWrittenIsNamedBeforeAnythingIsSent) {
    ASSERT_TRUE(CreateDirectoryW(PathOf(L"a.map.part").c_str(), nullptr));
    ExpectRefusal(4, command, "a.map.part is a folder.");
    ExpectRefusal(2, L"range --resume /maps/a.map 0 1", "--resume is an option of download alone.");
}
