#include "SimulatorTest.h"
#include "machine/Journal.h"

namespace {

class Journal : public SimulatorTest {};

}  // namespace

TEST_F(Journal, ShowsTheCallsOfOneRequest) {
    device.AddHost(u"host", 80, WebReply::WithBody("abc"));
    const HINTERNET session = InternetOpenW(u"Agent", 0, u"proxy", nullptr, 1);
    const HINTERNET connection =
        InternetConnectW(session, u"host", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 5);
    const HINTERNET request =
        HttpOpenRequestW(connection, u"POST", u"a.cgi", nullptr, nullptr, nullptr, 0x80100, 0);
    char body[12] = {};
    HttpSendRequestW(request, u"A:\t\u20AC", 4, body, sizeof body);
    Read(request, 256);
    DWORD status = 0;
    DWORD length = sizeof status;
    HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &length, nullptr);
    WCHAR text[8];
    length = sizeof text;
    HttpQueryInfoW(request, HTTP_QUERY_CONTENT_LENGTH, text, &length, nullptr);
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
    const Lines expected = {
        R"(InternetOpenW("Agent", 0, "proxy", null, 0x00000001) = session 1)",
        R"(InternetConnectW(session 1, "host", 80, null, null, 3, 0x00000000, 5) = connection 1)",
        R"(HttpOpenRequestW(connection 1, "POST", "a.cgi", null, null, null, 0x00080100, 0) = request 1)",
        R"(HttpSendRequestW(request 1, "A:<U+0009><U+20AC>", 4, body, 12) = TRUE)",
        "InternetReadFile(request 1, 256) = TRUE, 3",
        "HttpQueryInfoW(request 1, 0x20000013) = TRUE, 200",
        R"(HttpQueryInfoW(request 1, 0x00000005) = TRUE, "3")",
        "InternetCloseHandle(request 1) = TRUE",
        "InternetCloseHandle(connection 1) = TRUE",
        "InternetCloseHandle(session 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(Journal, ShowsTheRegistryAndItsErrorsAsResults) {
    device.SetRegistryValue(HKEY_CURRENT_USER, u"Software\\Name", u"Value", REG_SZ, "abcd");
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"Software", 0, KEY_READ, &key);
    RegOpenKeyExW(HKEY_CURRENT_USER, u"Software\\Name", 0, KEY_READ, &key);
    DWORD size = 2;
    BYTE buffer[4];
    RegQueryValueExW(key, u"Value", nullptr, nullptr, buffer, &size);
    RegQueryValueExW(key, u"Value", nullptr, nullptr, buffer, &size);
    RegQueryValueExW(key, u"None", nullptr, nullptr, nullptr, nullptr);
    RegCloseKey(key);
    const Lines expected = {
        R"(RegOpenKeyExW(HKEY_LOCAL_MACHINE, "Software", 0, 0x00020019) = 2)",
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Name", 0, 0x00020019) = 0, key 1)",
        R"(RegQueryValueExW(key 1, "Value", 2) = 234, type 1, 4 bytes)",
        R"(RegQueryValueExW(key 1, "Value", 4) = 0, type 1, 4 bytes)",
        R"(RegQueryValueExW(key 1, "None", null) = 2)",
        "RegCloseKey(key 1) = 0",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(Journal, ShowsFilesModulesAndShell) {
    GetFileAttributesW(u"\\Temp");
    GetFileAttributesW(u"\\Temp\\none");
    GetModuleHandleW(nullptr);
    WCHAR path[MAX_PATH];
    GetModuleFileNameW(device.LibraryInstance(), path, MAX_PATH);
    SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE);
    SHGetSpecialFolderPathW(nullptr, path, 99, FALSE);
    SHInitExtraControls(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr);
    const Lines expected = {
        R"(GetFileAttributesW("\Temp") = 0x00000010)",
        R"(GetFileAttributesW("\Temp\none") = 0xFFFFFFFF, error 2)",
        "GetModuleHandleW(null) = program",
        R"(GetModuleFileNameW(library, 260) = 36, "\Program Files\App\OrvandeOnline.dll")",
        R"(SHGetSpecialFolderPathW(null, 5, TRUE) = TRUE, "\My Documents")",
        "SHGetSpecialFolderPathW(null, 99, FALSE) = FALSE, error 87",
        "SHInitExtraControls(library, 1, null) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls());
}

TEST_F(Journal, GivesTheLinesOfTheFunctionsAskedFor) {
    GetFileAttributesW(u"\\Temp");
    GetModuleHandleW(nullptr);
    SHInitExtraControls(nullptr, 0, nullptr);
    EXPECT_EQ(
        (Lines{R"(GetFileAttributesW("\Temp") = 0x00000010)", "SHInitExtraControls(null, 0, null) = TRUE"}),
        device.Calls({"SHInitExtraControls", "GetFileAttributesW"}));
    EXPECT_EQ(Lines{}, device.Calls({"MessageBoxW"}));
}

TEST_F(Journal, MisspeltFunctionIsAMistakeInTheTest) {
    device.Calls({"InternetOpen"});
    device.CountCalls("wcslen");
    EXPECT_EQ((Lines{"a test asks for calls to InternetOpen, which is not simulated",
                     "a test asks for calls to wcslen, which is not simulated"}),
              TakeViolations());
}

TEST_F(Journal, EqualLinesInARowAreOneLine) {
    for (int i = 0; i < 3; ++i)
        GetModuleHandleW(nullptr);
    GetFileAttributesW(u"\\Temp");
    GetModuleHandleW(nullptr);
    EXPECT_EQ((Lines{"GetModuleHandleW(null) = program (3 times)",
                     R"(GetFileAttributesW("\Temp") = 0x00000010)", "GetModuleHandleW(null) = program"}),
              device.Calls());
    EXPECT_EQ(4u, device.CountCalls("GetModuleHandleW"));
}

TEST_F(Journal, StaysBoundedAndCountsExactly) {
    for (int i = 0; i < 6000; ++i) {
        GetModuleHandleW(nullptr);
        SHInitExtraControls(nullptr, 0, nullptr);
    }
    const Lines lines = device.Calls();
    ASSERT_EQ(10001u, lines.size());
    EXPECT_EQ("SHInitExtraControls(null, 0, null) = TRUE", lines[9999]);
    EXPECT_EQ("... and 2000 further calls", lines[10000]);
    EXPECT_EQ("... and 1000 further calls", device.Calls({"GetModuleHandleW"}).back());
    EXPECT_EQ(Lines{}, device.Calls({"MessageBoxW"}));
    EXPECT_EQ(6000u, device.CountCalls("GetModuleHandleW"));
}

TEST_F(Journal, ForgettingKeepsTheNumbersOfHandles) {
    InternetCloseHandle(InternetOpenW(nullptr, 0, nullptr, nullptr, 0));
    device.ForgetCalls();
    EXPECT_EQ(Lines{}, device.Calls());
    EXPECT_EQ(0u, device.CountCalls("InternetOpenW"));
    InternetCloseHandle(InternetOpenW(nullptr, 0, nullptr, nullptr, 0));
    EXPECT_EQ(Lines{"InternetOpenW(null, 0, null, null, 0x00000000) = session 2"},
              device.Calls({"InternetOpenW"}));
}

TEST_F(Journal, EveryTestBeginsWithAnEmptyOne) {
    GetModuleHandleW(nullptr);
    device.EndTest();
    device.BeginTest();
    EXPECT_EQ(Lines{}, device.Calls());
    EXPECT_EQ(0u, device.CountCalls("GetModuleHandleW"));
}

TEST_F(Journal, CountsCallsWhileItIsNotWritten) {
    simulator::Journal::Current().SetWritten(false);
    const HINTERNET session = InternetOpenW(u"Agent", 0, nullptr, nullptr, 0);
    simulator::Journal::Current().SetWritten(true);
    InternetCloseHandle(session);
    EXPECT_EQ(1U, device.CountCalls("InternetOpenW"));
    EXPECT_EQ(Lines{"InternetCloseHandle(session) = TRUE"}, device.Calls());
}

TEST_F(Journal, MistakesAreTheSameWhileItIsNotWritten) {
    simulator::Journal::Current().SetWritten(false);
    InternetCloseHandle(reinterpret_cast<HINTERNET>(uintptr_t{0x1234}));
    simulator::Journal::Current().SetWritten(true);
    EXPECT_EQ(Lines{"InternetCloseHandle: a handle is not open"}, TakeViolations());
}
