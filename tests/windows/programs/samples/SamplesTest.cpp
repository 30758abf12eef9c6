/* The samples of examples/c and examples/cpp, which print the same, with the service and with scripted
 * servers. */
#include <gmock/gmock.h>

#include "helpers/ChildProcess.h"
#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScratchFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"
#include "support/MapShopReply.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;

/* The parameter is the language. */
class Samples : public testing::TestWithParam<const char*> {
protected:
    ChildOutcome Run(const std::wstring& sample, const std::wstring& arguments) {
        const std::wstring file = ProgramFolder() + L"\\" + Widened(GetParam()) + L"-" + sample + L".exe";
        return RunChild(L"\"" + file + L"\" " + arguments, folder.Path());
    }

    void Expect(DWORD exitCode, const std::string& output, const ChildOutcome& outcome) {
        EXPECT_EQ(exitCode, outcome.exitCode);
        EXPECT_EQ(output, outcome.output);
        EXPECT_EQ("", outcome.errors);
    }

    [[nodiscard]] std::wstring File() const { return folder.Path() + L"\\a.map"; }

    ScratchFolder folder;
};

/* The samples reach the reference service. */
class SamplesWithService : public Samples {
    WebProxy proxy{PortTold("ORVANDE_TEST_MAPS_PORT")};
};

class SamplesWithServer : public Samples {
protected:
    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

class SamplesWithoutNetwork : public Samples {
    ClosedPort closed;
    WebProxy nobody{closed.Number()};
};

constexpr wchar_t corsica[] = L"online.orvande.example /maps/corsica.map ";

}  // namespace

INSTANTIATE_TEST_SUITE_P(C, SamplesWithService, testing::Values("c", "cpp"));
INSTANTIATE_TEST_SUITE_P(C, SamplesWithServer, testing::Values("c", "cpp"));
INSTANTIATE_TEST_SUITE_P(C, SamplesWithoutNetwork, testing::Values("c", "cpp"));

TEST_P(SamplesWithService, SearchPrintsWhatLiesAtCilaos) {
    // The example of the service's document.
    Expect(0, "R\xC3\xA9union, 1080 KB, /maps/reunion.map\n40 maps in the shop\n",
           Run(L"search", L"-21.13 55.47 -21.13 55.47"));
}

TEST_P(SamplesWithService, SearchPrintsTextOfAnyScript) {
    const ChildOutcome outcome = Run(L"search", L"");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ(41, std::count(outcome.output.begin(), outcome.output.end(), '\n'));
    EXPECT_THAT(outcome.output,
                HasSubstr("\nHokkaid\xC5\x8D (\xE5\x8C\x97\xE6\xB5\xB7\xE9\x81\x93), 10110 KB, "
                          "/maps/hokkaido.map\n"));
    EXPECT_THAT(outcome.output, EndsWith("\n40 maps in the shop\n"));
}

TEST_P(SamplesWithService, DownloadShowsItsProgressAndBringsTheFile) {
    Expect(0, "10%\n20%\n30%\n40%\n50%\n60%\n70%\n80%\n90%\n100%\n2365440 bytes\n",
           Run(L"download", corsica + File()));
    EXPECT_EQ(2365440U, ContentOf(File()).size());
}

TEST_P(SamplesWithService, DownloadOfAFileThatIsTooLargeIsCancelled) {
    Expect(1, "cancelled: the file is too large\n", Run(L"download", corsica + File() + L" 2365439"));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_P(SamplesWithService, RangePrintsTheBytesOfTheDocumentsExample) {
    Expect(0, "2c c9 ae f2 a0 77 01 f9\n", Run(L"range", L"online.orvande.example /maps/reunion.map 1000 8"));
}

TEST_P(SamplesWithService, RefusalsAreToldWithTheirStatus) {
    Expect(1, "the server refused: HTTP status 404\n",
           Run(L"download", L"online.orvande.example /maps/none.map " + File()));
    Expect(1, "the server refused: HTTP status 416\n", Run(L"range", corsica + std::wstring(L"2365440 1")));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_P(SamplesWithService, PartThatReachesBeyondTheEndIsTold) {
    Expect(1, "the file ends before the part does\n", Run(L"range", corsica + std::wstring(L"2365438 3")));
}

TEST_P(SamplesWithServer, SearchTellsThatTheAnswerBrokeOff) {
    server.Answer(MapShopReply().Int32(0).Int32(2).Map(L"Alps", -5, L"/a.map", L"Text").bytes);
    Expect(1, "Alps, -5 KB, /a.map\n0 maps in the shop\nthis is not all: error 0x20000003\n",
           Run(L"search", L""));
}

TEST_P(SamplesWithServer, DownloadTellsThatTheReplyEndedEarly) {
    server.Answer(
        ConnectionScript{"HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 100\r\n\r\n12345"});
    Expect(1, "failed: error 0x20000003\n", Run(L"download", corsica + File()));
}

TEST_P(SamplesWithServer, DownloadOfAnUnknownLengthIsCancelledWhereItBecomesTooLarge) {
    server.Answer(ConnectionScript{"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + std::string(90000, 'x')});
    Expect(1, "cancelled: the file is too large\n", Run(L"download", corsica + File() + L" 50000"));
    Expect(0, "90000 bytes\n", Run(L"download", corsica + File() + L" 90000"));
}

TEST_P(SamplesWithServer, WrongArgumentsSendNothing) {
    Expect(2, "usage: search [SOUTH WEST NORTH EAST]\n", Run(L"search", L"1 2 3"));
    Expect(2, "usage: download HOST PATH FILE [MOST]\n", Run(L"download", corsica));
    const std::string usage = "usage: range HOST PATH OFFSET LENGTH (LENGTH: 1 to 4096)\n";
    Expect(2, usage, Run(L"range", corsica));
    Expect(2, usage, Run(L"range", corsica + std::wstring(L"0 4097")));
    Expect(2, usage, Run(L"range", corsica + std::wstring(L"-1 1")));
    EXPECT_EQ(0U, server.TakeRequests().size());
}

TEST_P(SamplesWithoutNetwork, CauseIsThatNobodyCanBeReached) {
    Expect(1, "0 maps in the shop\nthis is not all: error 0x00002EFD\n", Run(L"search", L""));
    Expect(1, "failed: error 0x00002EFD\n", Run(L"download", corsica + File()));
    Expect(1, "failed: error 0x00002EFD\n", Run(L"range", corsica + std::wstring(L"0 1")));
}
