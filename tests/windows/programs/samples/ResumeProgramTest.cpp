/* The program resume with the service: it is killed, and run again. */
#include <gmock/gmock.h>

#include "helpers/ChildProcess.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScratchFolder.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"

namespace {

constexpr uint64_t pieceSize = 65536;

class ResumeProgram : public testing::Test {
protected:
    static std::wstring Command(const std::wstring& program, const std::wstring& values) {
        return L"\"" + ProgramFolder() + L"\\" + program + L".exe\" " + values;
    }

    [[nodiscard]] ChildOutcome Run(const std::wstring& program, const std::wstring& values) const {
        return RunChild(Command(program, values), folder.Path());
    }

    /* Kills it when so many bytes have come; false when it came to its end before. */
    [[nodiscard]] bool KillAt(uint64_t bytes) const {
        const std::wstring part = folder.Path() + L"\\a.map.part";
        return KillChild(Command(L"resume", arguments), folder.Path(),
                         [&] { return SizeOfFile(part) >= bytes; });
    }

    const std::wstring arguments = L"online.orvande.example /maps/corsica.map a.map";
    ScratchFolder folder;
    WebProxy proxy{PortTold("ORVANDE_TEST_MAPS_PORT")};
};

}  // namespace

TEST_F(ResumeProgram, KilledAtAnyMomentBringsTheFileInTheEnd) {
    PutFile(folder.Path() + L"\\a.map", "older");
    // At the beginning, before and at the end of a piece, and where nothing new may have come.
    for (const uint64_t bytes : {uint64_t{0}, uint64_t{1}, 2 * pieceSize, 5 * pieceSize + 1, 5 * pieceSize,
                                 13 * pieceSize, 20 * pieceSize + 4096}) {
        SCOPED_TRACE(bytes);
        EXPECT_TRUE(KillAt(bytes));
        EXPECT_EQ("older", ContentOf(folder.Path() + L"\\a.map"));
    }
    const ChildOutcome outcome = Run(L"resume", arguments);
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_THAT(outcome.output, testing::HasSubstr(" bytes had come before\n2365440 bytes\n"));
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
    ASSERT_EQ(0U, Run(L"c-download", L"online.orvande.example /maps/corsica.map whole.map").exitCode);
    EXPECT_TRUE(ContentOf(folder.Path() + L"\\whole.map") == ContentOf(folder.Path() + L"\\a.map"));
}

TEST_F(ResumeProgram, WithoutAnEarlierDownloadShowsItsTenths) {
    const ChildOutcome outcome = Run(L"resume", L"online.orvande.example /maps/galapagos.map a.map");
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("10%\n20%\n30%\n40%\n50%\n60%\n70%\n80%\n90%\n100%\n706559 bytes\n", outcome.output);
}

TEST_F(ResumeProgram, SmallFilesComeWhole) {
    EXPECT_EQ("0 bytes\n", Run(L"resume", L"online.orvande.example /maps/bouvet-island.map a.map").output);
    EXPECT_EQ("100%\n1 bytes\n", Run(L"resume", L"online.orvande.example /maps/rockall.map a.map").output);
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
}

TEST_F(ResumeProgram, RefusalAndWrongArgumentsAreTold) {
    const ChildOutcome refused = Run(L"resume", L"online.orvande.example /maps/none.map a.map");
    EXPECT_EQ(1U, refused.exitCode);
    EXPECT_EQ("the server refused: HTTP status 404\n", refused.output);
    const ChildOutcome wrong = Run(L"resume", L"online.orvande.example /maps/none.map");
    EXPECT_EQ(2U, wrong.exitCode);
    EXPECT_EQ("usage: resume HOST PATH FILE\n", wrong.output);
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}
