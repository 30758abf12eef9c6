/* What the console program mapshop makes of downloads and ranged reads, and what it says. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "helpers/ChildProcess.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScratchFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (size_t end; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1))
        lines.emplace_back(text.substr(0, end));
    if (!text.empty()) lines.emplace_back(text);
    return lines;
}

std::string LastLineOf(std::string_view text) {
    const std::vector<std::string> lines = LinesOf(text);
    return lines.empty() ? "" : lines.back();
}

/* Bytes of which no 251 are like the next. */
std::string Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251 + i / 251);
    return bytes;
}

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

class MapshopInFolder : public testing::Test {
protected:
    void SetUp() override { SetEnvironmentVariableW(L"COLUMNS", L"100"); }

    /* Runs the program in the folder; relative names mean files there. */
    [[nodiscard]] ChildOutcome Run(const std::wstring& arguments) const {
        return RunChild(L"\"" + ProgramFolder() + L"\\mapshop.exe\" " + arguments, folder.Path());
    }

    [[nodiscard]] std::wstring PathOf(const std::wstring& name) const { return folder.Path() + L"\\" + name; }

    static void ExpectFailure(DWORD exitCode, const std::string& message, const ChildOutcome& outcome) {
        EXPECT_EQ(exitCode, outcome.exitCode);
        EXPECT_EQ("", outcome.output);
        EXPECT_EQ("mapshop: " + message + "\n", outcome.errors);
    }

    ScratchFolder folder;
};

class MapshopTransfer : public MapshopInFolder {
protected:
    /* Expects a message about the command line or the local file, before anything is sent. */
    void ExpectRefusal(DWORD exitCode, const std::wstring& arguments, const std::string& message) {
        SCOPED_TRACE(message);
        ExpectFailure(exitCode, message, Run(arguments));
        EXPECT_EQ(0U, server.TakeRequests().size());
    }

    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

using MapshopDownload = MapshopTransfer;
using MapshopInterrupted = MapshopInFolder;
using MapshopUnreached = MapshopInFolder;
using MapshopRange = MapshopTransfer;

constexpr char plainHead[] = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
constexpr char headOf10000[] = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: 10000\r\n\r\n";
constexpr char notFound[] =
    "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 9\r\n\r\nnot found";

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
    static_cast<void>(Run(L"download /maps/a.map a.map"));
    static_cast<void>(Run(L"download /maps/a.map --host maps.example a.map"));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ("GET http://online.orvande.example:80/maps/a.map HTTP/1.1", requests[0].line);
    EXPECT_EQ("GET http://maps.example:80/maps/a.map HTTP/1.1", requests[1].line);
}

TEST_F(MapshopDownload, RefusedPathLeavesTheOlderFile) {
    PutFile(PathOf(L"a.map"), "older");
    server.Answer(ConnectionScript{notFound});
    ExpectFailure(1,
                  "Nothing was downloaded: online.orvande.example cannot be reached, or refused /maps/a.map.",
                  Run(L"download /maps/a.map a.map"));
    EXPECT_EQ("older", ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(std::vector<std::wstring>{L"a.map"}, folder.Names());
}

TEST_F(MapshopDownload, CutShortOfItsLengthKeepsNothing) {
    server.Answer(ConnectionScript{headOf10000 + Content(5000)});
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ("mapshop: The download ended after 5,000 bytes of 10,000, and nothing was kept.",
              LastLineOf(outcome.errors));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopDownload, CutOverAnOlderFileSaysThatItIsGone) {
    PutFile(PathOf(L"a.map"), "older");
    server.Answer(ConnectionScript{headOf10000 + Content(5000)});
    const ChildOutcome outcome = Run(L"download /maps/a.map a.map");
    EXPECT_EQ(1U, outcome.exitCode);
    EXPECT_EQ(
        "mapshop: The download ended after 5,000 bytes of 10,000, and nothing was kept. The older a.map is "
        "gone.",
        LastLineOf(outcome.errors));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
}

TEST_F(MapshopDownload, LostConnectionKeepsNothing) {
    // After the head alone: a loss in the middle of a read that has bytes may pass for the end.
    ConnectionScript script{headOf10000, ConnectionScript::Ending::Reset};
    script.beforeEnding = [this] { WaitForFile(PathOf(L"a.map.TMP")); };
    server.Answer(script);
    ExpectFailure(1,
                  "The download broke off after 0 bytes, and nothing was kept: the connection was lost, or "
                  "there is no room for the file.",
                  Run(L"download /maps/a.map a.map"));
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
    EXPECT_EQ("mapshop: The download is complete, but a.map could not be replaced: it is in a.map.TMP.",
              LastLineOf(outcome.errors));
    EXPECT_EQ("made meanwhile", ContentOf(PathOf(L"a.map")));
    EXPECT_EQ(Content(100), ContentOf(PathOf(L"a.map.TMP")));
}

TEST_F(MapshopUnreached, HostIsNamed) {
    // Bound but not listening: nobody else can take the port, and nobody answers.
    const SocketLibrary sockets;
    const Socket closed = BoundSocket();
    const WebProxy nobody(PortOf(closed.Get()));
    ExpectFailure(1, "Nothing was downloaded: maps.example cannot be reached, or refused /maps/a.map.",
                  Run(L"download /maps/a.map a.map --host maps.example"));
    ExpectFailure(1,
                  "Nothing was read: maps.example cannot be reached, or refused /maps/a.map or this part of "
                  "it.",
                  Run(L"range /maps/a.map 0 20 part --host maps.example"));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
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
    EXPECT_EQ("mapshop: Cancelled; nothing was kept.", LastLineOf(outcome.errors));
    EXPECT_EQ(std::vector<std::wstring>{}, folder.Names());
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
                  "none\\a.map.TMP cannot be written: its folder does not exist, or its name is too long.");
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
    ExpectRefusal(4, L"download /a a.map", "a.map cannot be written: another program has it open.");
    CloseHandle(open);
    EXPECT_EQ("older", ContentOf(path));
}

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
        "Nothing was read: online.orvande.example cannot be reached, or refused /maps/a.map or this "
        "part of it.",
        Run(L"range /maps/a.map 0 20 part"));
    EXPECT_EQ("older", ContentOf(PathOf(L"part")));
}

TEST_F(MapshopRange, ReplyThatIsTooShortIsAFailureAndKeepsNothing) {
    server.Answer(Content(19));
    ExpectFailure(1,
                  "The reply broke off: /maps/a.map has no 20 bytes from byte 7 on, or the connection was "
                  "lost.",
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
                  "none\\part cannot be written: its folder does not exist, or its name is too long.");
    ASSERT_TRUE(CreateDirectoryW(PathOf(L"folder").c_str(), nullptr));
    ExpectRefusal(4, L"range /a 0 1 folder", "folder is a folder.");
}
