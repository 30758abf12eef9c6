#include "SimulatorTest.h"

namespace {

class HandlesOf : public SimulatorTest {
protected:
    static HINTERNET OpenSession() { return InternetOpenW(u"Agent", 0, nullptr, nullptr, 0); }

    HKEY OpenKey() {
        device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key");
        HKEY key = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key));
        return key;
    }
};

}  // namespace

TEST_F(HandlesOf, ClosingTwiceIsAViolation) {
    const HINTERNET session = OpenSession();
    EXPECT_TRUE(InternetCloseHandle(session));
    EXPECT_FALSE(InternetCloseHandle(session));
    EXPECT_EQ(DWORD{ERROR_INVALID_HANDLE}, GetLastError());
    EXPECT_EQ(Lines{"InternetCloseHandle(closed session 1): closed session 1 is not open"}, TakeViolations());
}

TEST_F(HandlesOf, ClosingAKeyTwiceIsAViolation) {
    const HKEY key = OpenKey();
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(key));
    EXPECT_EQ(Lines{"RegCloseKey(closed key 1): closed key 1 is not open"}, TakeViolations());
}

TEST_F(HandlesOf, UnknownHandleIsAViolation) {
    EXPECT_FALSE(InternetCloseHandle(reinterpret_cast<HINTERNET>(uintptr_t{0x1234})));
    EXPECT_EQ(Lines{"InternetCloseHandle(unknown handle 0x1234): unknown handle 0x1234 is not open"},
              TakeViolations());
}

TEST_F(HandlesOf, WrongKindIsAViolation) {
    const OpenRequest open;
    const HKEY key = OpenKey();
    EXPECT_FALSE(HttpSendRequestW(open.connection, nullptr, 0, nullptr, 0));
    EXPECT_EQ(nullptr, HttpOpenRequestW(open.session, nullptr, u"", nullptr, nullptr, nullptr, 0, 0));
    EXPECT_FALSE(InternetCloseHandle(key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(static_cast<HKEY>(open.session)));
    EXPECT_EQ((Lines{"HttpSendRequestW(connection 1, null, 0, null, 0): connection 1 is of the wrong kind",
                     "HttpOpenRequestW(session 1, null, \"\", null, null, null, 0x00000000, 0): session 1 is "
                     "of the wrong kind",
                     "InternetCloseHandle(key 1): key 1 is of the wrong kind",
                     "RegCloseKey(session 1): session 1 is of the wrong kind"}),
              TakeViolations());
    RegCloseKey(key);
}

TEST_F(HandlesOf, UseAfterCloseIsAViolation) {
    HINTERNET request = nullptr;
    {
        const OpenRequest open;
        request = open.request;
    }
    EXPECT_FALSE(HttpSendRequestW(request, nullptr, 0, nullptr, 0));
    EXPECT_EQ((ReadResult{false, ERROR_INVALID_HANDLE, ""}), Read(request, 4));
    EXPECT_EQ(2u, TakeViolations().size());
}

TEST_F(HandlesOf, ParentClosedBeforeItsChildIsAViolation) {
    const HINTERNET session = OpenSession();
    const HINTERNET connection =
        InternetConnectW(session, u"host", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    EXPECT_TRUE(InternetCloseHandle(session));
    EXPECT_EQ(Lines{"InternetCloseHandle(session 1): session 1 is closed before what was opened from it"},
              TakeViolations());
    EXPECT_TRUE(InternetCloseHandle(connection));
}

TEST_F(HandlesOf, ValuesAreNeverUsedAgain) {
    const HINTERNET first = OpenSession();
    InternetCloseHandle(first);
    const HINTERNET second = OpenSession();
    EXPECT_NE(first, second);
    InternetCloseHandle(second);
}

TEST_F(HandlesOf, EverythingLeftOpenIsReportedAtTheEnd) {
    const HINTERNET connection =
        InternetConnectW(OpenSession(), u"host", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    HttpOpenRequestW(connection, nullptr, u"file", nullptr, nullptr, nullptr, 0, 0);
    OpenKey();
    _wfopen(u"\\Temp\\left", u"wb");
    device.EndTest();
    const Lines expected = {
        R"(file 1 ("\Temp\left") is still open at the end of the test)",
        "session 1 is still open at the end of the test",
        "connection 1 is still open at the end of the test",
        "request 1 is still open at the end of the test",
        "key 1 is still open at the end of the test",
    };
    EXPECT_EQ(expected, TakeViolations());
    // What was reported once is closed: the next test starts clean.
    device.BeginTest();
    device.EndTest();
    EXPECT_EQ(Lines{}, TakeViolations());
}

TEST_F(HandlesOf, WhatWasOpenBeforeTheTestIsNoLeakAndIsNamedEarlier) {
    const HKEY key = OpenKey();
    FILE* const file = _wfopen(u"\\Temp\\early", u"wb");
    device.BeginTest();
    device.EndTest();
    EXPECT_EQ(Lines{}, TakeViolations());
    device.BeginTest();
    const HKEY next = OpenKey();
    RegCloseKey(key);
    fclose(file);
    RegCloseKey(next);
    const Lines expected = {
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Key", 0, 0x00020019) = 0, key 1)",
        "RegCloseKey(earlier key 1) = 0",
        "fclose(earlier file 1) = 0",
        "RegCloseKey(key 1) = 0",
    };
    EXPECT_EQ(expected, device.Calls());
}
