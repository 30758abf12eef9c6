#include "SimulatorTest.h"

namespace {

class Failures : public SimulatorTest {
protected:
    /* The outcomes of `count` calls: + for success, - for failure. */
    static std::string Outcomes(int count) {
        std::string outcomes;
        for (int i = 0; i < count; ++i)
            outcomes += GetModuleHandleW(nullptr) != nullptr ? '+' : '-';
        return outcomes;
    }
};

}  // namespace

TEST_F(Failures, TheNthCallFailsOnce) {
    device.FailCall("GetModuleHandleW", 3, 1234);
    EXPECT_EQ("++-++", Outcomes(5));
    EXPECT_EQ(1u, device.FailedCalls());
    EXPECT_EQ(1234u, GetLastError());
}

TEST_F(Failures, TheNthCallAndAllAfterItFail) {
    device.FailCall("GetModuleHandleW", 2, 1234, Failing::FromThereOn);
    EXPECT_EQ("+----", Outcomes(5));
    EXPECT_EQ(4u, device.FailedCalls());
}

TEST_F(Failures, CallsCountFromTheOrder) {
    Outcomes(2);
    device.FailCall("GetModuleHandleW", 1, 1234);
    EXPECT_EQ("-++", Outcomes(3));
}

TEST_F(Failures, OrdersStandBesideEachOther) {
    device.FailCall("GetModuleHandleW", 1, 1);
    device.FailCall("GetModuleHandleW", 3, 1);
    device.FailCall("InternetOpenW", 1, 1);
    EXPECT_EQ("-+-+", Outcomes(4));
    EXPECT_EQ(nullptr, InternetOpenW(nullptr, 0, nullptr, nullptr, 0));
}

TEST_F(Failures, StopFailingForgetsTheOrders) {
    device.FailCall("GetModuleHandleW", 2, 1, Failing::FromThereOn);
    EXPECT_EQ("+-", Outcomes(2));
    device.StopFailing();
    EXPECT_EQ("+++", Outcomes(3));
    EXPECT_EQ(1u, device.FailedCalls());
}

TEST_F(Failures, OrdersEndWithTheTest) {
    device.FailCall("GetModuleHandleW", 1, 1, Failing::FromThereOn);
    device.EndTest();
    device.BeginTest();
    EXPECT_EQ("+", Outcomes(1));
    EXPECT_EQ(0u, device.FailedCalls());
}

TEST_F(Failures, UnknownFunctionAndCallZeroAreMistakesInTheTest) {
    device.FailCall("InternetOpen", 1, 1);
    device.FailCall("InternetOpenW", 0, 1);
    EXPECT_EQ((Lines{"FailCall names InternetOpen, which is not simulated", "FailCall counts calls from 1"}),
              TakeViolations());
    EXPECT_EQ(0u, device.FailedCalls());
}

TEST_F(Failures, EachFunctionFailsInItsOwnWay) {
    device.AddHost(u"host.example", 80, WebReply::WithBody("abc"));
    device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key");
    for (const char* function : {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW",
                                 "HttpQueryInfoW", "RegOpenKeyExW", "RegQueryValueExW", "GetFileAttributesW",
                                 "SHGetSpecialFolderPathW", "GetModuleFileNameW", "SHInitExtraControls",
                                 "_wfopen", "LoadCursorW", "SetCursor", "MessageBoxW"}) {
        device.FailCall(function, 1, 1234);
    }
    HKEY key = nullptr;
    WCHAR path[MAX_PATH];
    DWORD size = sizeof path;
    EXPECT_EQ(nullptr, InternetOpenW(nullptr, 0, nullptr, nullptr, 0));
    EXPECT_EQ(1234u, GetLastError());
    const HINTERNET session = InternetOpenW(nullptr, 0, nullptr, nullptr, 0);
    const auto connect = [&] {
        return InternetConnectW(session, u"host.example", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    };
    EXPECT_EQ(nullptr, connect());
    const HINTERNET connection = connect();
    const auto open = [&] {
        return HttpOpenRequestW(connection, nullptr, u"file", nullptr, nullptr, nullptr, 0, 0);
    };
    EXPECT_EQ(nullptr, open());
    const HINTERNET request = open();
    EXPECT_EQ(1234, RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key));
    EXPECT_EQ(nullptr, key);
    EXPECT_EQ(1234, RegQueryValueExW(HKEY_CURRENT_USER, u"", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(u"\\Temp"));
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(0u, GetModuleFileNameW(nullptr, path, MAX_PATH));
    EXPECT_FALSE(SHInitExtraControls(nullptr, 1, nullptr));
    EXPECT_EQ(nullptr, _wfopen(u"\\Temp\\file", u"wb"));
    EXPECT_EQ(nullptr, LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(nullptr, SetCursor(nullptr));
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
    EXPECT_EQ(0, MessageBoxW(nullptr, u"", u"", MB_OK)) << "it is not shown: nobody has to expect it";
    EXPECT_TRUE(device.MessageBoxes().empty());
    EXPECT_FALSE(HttpSendRequestW(request, nullptr, 0, nullptr, 0));
    EXPECT_TRUE(device.Requests().empty());
    EXPECT_TRUE(HttpSendRequestW(request, nullptr, 0, nullptr, 0));
    EXPECT_FALSE(HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE, path, &size, nullptr));
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
    EXPECT_EQ(15u, device.FailedCalls());
}

TEST_F(Failures, FailedReadGivesNoBytesAndLosesNone) {
    device.AddHost(u"host.example", 80, WebReply::WithBody("abc"));
    const OpenRequest open;
    EXPECT_TRUE(open.Send());
    device.FailCall("InternetReadFile", 1, 12030);
    EXPECT_EQ((ReadResult{false, 12030, ""}), Read(open.request, 10));
    EXPECT_EQ((ReadResult{true, 0, "abc"}), Read(open.request, 10));
}

TEST_F(Failures, FailedCloseClosesAllTheSame) {
    device.FailCall("InternetCloseHandle", 1, 1234);
    device.FailCall("RegCloseKey", 1, 1234);
    device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key");
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key);
    EXPECT_EQ(1234, RegCloseKey(key));
    EXPECT_FALSE(InternetCloseHandle(InternetOpenW(nullptr, 0, nullptr, nullptr, 0)));
    device.EndTest();
    EXPECT_EQ(Lines{}, TakeViolations());
}
