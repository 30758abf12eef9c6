/* Downloads with the console program mapshop that come to nothing. */
#include <gmock/gmock.h>

#include <stdexcept>

#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "helpers/LocalListener.h"
#include "programs/mapshop/MapshopProgramTest.h"

using testing::AnyOf;
using testing::EndsWith;
using testing::StartsWith;

namespace {

/* A console that this process and its children share while it lives. Interrupts leave this process alone. */
class SharedConsole {
public:
    SharedConsole() {
        FreeConsole();
        if (!AllocConsole()) throw std::runtime_error("no console can be had");
        SetConsoleCtrlHandler(Ignore, TRUE);
    }
    ~SharedConsole() {
        SetConsoleCtrlHandler(Ignore, FALSE);
        FreeConsole();
    }
    SharedConsole(const SharedConsole&) = delete;
    SharedConsole& operator=(const SharedConsole&) = delete;

    /* Does what Ctrl-C does. */
    static void Interrupt() { GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); }

private:
    static BOOL WINAPI Ignore(DWORD) { return TRUE; }
};

using MapshopDownload = MapshopWebTest;
using MapshopInterrupted = MapshopProgramTest;
using MapshopUnreached = MapshopProgramTest;

}  // namespace

TEST_F(MapshopDownload, RefusedPathLeavesTheOlderFile) {
    PutFile(PathOf(L"a.map"), "older");
    server.Answer(ConnectionScript{notFound});
    ExpectFailure(
        1,
        "a.map was not downloaded: online.orvande.example does not have /maps/a.map; check the name "
        "(HTTP 404).",
        Run(L"download /maps/a.map a.map"));
    EXPECT_EQ("older", ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
}

TEST_F(MapshopDownload, CutShortOfItsLengthKeepsNothing) {
    server.Answer(ConnectionScript{headOf10000 + Content(5000)});
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ(
        "mapshop: The download of a.map ended after 5,000 bytes of 10,000, and nothing was kept: the reply "
        "ended early; try again (0x20000003).",
        LastLineOf(outcome.errors));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopDownload, CutOverAnOlderFileSaysThatItIsGone) {
    PutFile(PathOf(L"a.map"), "older");
    server.Answer(ConnectionScript{headOf10000 + Content(5000)});
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ(
        "mapshop: The download of a.map ended after 5,000 bytes of 10,000, and nothing was kept: the reply "
        "ended early; try again (0x20000003). The older a.map is gone.",
        LastLineOf(outcome.errors));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopDownload, LostConnectionKeepsNothing) {
    // After the head alone: a loss in the middle of a read that has bytes may pass for the end. One that
    // comes just before a read may, too.
    ConnectionScript script{headOf10000, ConnectionScript::Ending::Reset};
    script.beforeEnding = [this] { WaitForFile(PathOf(L"a.map.TMP")); };
    server.Answer(script);
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_THAT(
        outcome.errors,
        AnyOf("mapshop: The download of a.map broke off after 0 bytes, and nothing was kept: the connection "
              "to online.orvande.example was lost; try again (10054).\n",
              "0%  0 of 10,000 bytes\n"
              "mapshop: The download of a.map ended after 0 bytes of 10,000, and nothing was kept: the reply "
              "ended early; try again (0x20000003).\n"));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopDownload, TargetThatIsMadeMeanwhileStaysAndTheDownloadIsNamed) {
    ConnectionScript script{plainHead + Content(100)};
    script.beforeEnding = [this] {
        WaitForFile(PathOf(L"a.map.TMP"));
        PutFile(PathOf(L"a.map"), "made meanwhile");
    };
    server.Answer(script);
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(4U, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ(
        "mapshop: The download is in a.map.TMP, because a.map could not be replaced: a file of that name is "
        "there; delete or rename one of the two (183).",
        LastLineOf(outcome.errors));
    EXPECT_EQ("made meanwhile", ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(Content(100), ContentOf(PathOf(L"a.map.TMP")));
}

TEST_F(MapshopUnreached, HostIsNamed) {
    const ClosedPort closed;
    const WebProxy nobody(closed.Number());
    const std::string reason =
        "maps.example cannot be reached; check the connection, or try again later (12029).";
    ExpectFailure(1, "a.map was not downloaded: " + reason,
                  Run(L"download /maps/a.map a.map --host maps.example"));
    ExpectFailure(1, "/maps/a.map was not read: " + reason,
                  Run(L"range /maps/a.map 0 20 part --host maps.example"));
    ExpectFailure(
        1,
        "The search brought nothing: online.orvande.example cannot be reached; check the connection, "
        "or try again later (12029).",
        Run(L"search"));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopUnreached, HostThatIsNotKnownIsNamed) {
    ExpectFailure(1,
                  "a.map was not downloaded: the host maps.invalid is not known; check its name and the "
                  "connection (12007).",
                  Run(L"download /maps/a.map a.map --host maps.invalid"));
}

TEST_F(MapshopInterrupted, DownloadIsCancelledAndKeepsNothing) {
    const SharedConsole console;
    const LocalListener endless([this](const Socket& connection) {
        ReceiveSome(connection.Get());
        const std::string piece = Content(4096);
        SendAll(connection.Get(), plainHead + piece);
        WaitForFile(PathOf(L"a.map.TMP"));
        SharedConsole::Interrupt();
        // It would end even if nothing cancelled it.
        constexpr int most = 100'000;
        for (int i = 0; i < most && SendAll(connection.Get(), piece); ++i) {
        }
    });
    const WebProxy proxy(endless.Port());
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(5U, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_THAT(LastLineOf(outcome.errors), StartsWith("mapshop: The download of a.map broke off after "));
    EXPECT_THAT(LastLineOf(outcome.errors),
                EndsWith(" bytes, and nothing was kept: it was cancelled (0x20000002)."));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}
