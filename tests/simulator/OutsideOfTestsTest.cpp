/* The simulator before, between and after tests, when the library's static objects use it. */
#include "SimulatorTest.h"

namespace {

struct BeforeMain {
    BeforeMain() : session(InternetOpenW(u"Early", 0, nullptr, nullptr, 0)) {}

    HINTERNET session;
};

const BeforeMain beforeMain;

struct AfterMain {
    ~AfterMain() {
        WCHAR path[MAX_PATH];
        const bool isBare = SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE) == FALSE &&
                            GetFileAttributesW(u"\\Temp") == INVALID_FILE_ATTRIBUTES &&
                            _wfopen(u"\\Temp\\file", u"wb") == nullptr &&
                            InternetCloseHandle(beforeMain.session) != FALSE;
        if (!isBare) std::abort();
    }
};

const AfterMain afterMain;

class OutsideOfTests : public ::testing::Test {
protected:
    Device& device = Device::Current();
};

}  // namespace

TEST_F(OutsideOfTests, HandleOpenedBeforeMainIsOpenAndNoLeak) {
    EXPECT_NE(nullptr, beforeMain.session);
    device.BeginTest();
    const HINTERNET connection =
        InternetConnectW(beforeMain.session, u"host", 80, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    EXPECT_NE(nullptr, connection);
    EXPECT_TRUE(InternetCloseHandle(connection));
    EXPECT_EQ(0u, device.CountCalls("InternetOpenW"));
    device.EndTest();
}

TEST_F(OutsideOfTests, MachineIsBare) {
    WCHAR path[MAX_PATH];
    HKEY key = nullptr;
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, path, CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(u"\\Temp"));
    EXPECT_EQ(nullptr, _wfopen(u"\\Temp\\file", u"wb"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExW(HKEY_CURRENT_USER, u"Software", 0, KEY_READ, &key));
    EXPECT_EQ(DWORD{CONNMGR_STATUS_CONNECTED}, [] {
        CONNMGR_CONNECTIONINFO information{};
        information.cbSize = sizeof information;
        HANDLE link = nullptr;
        DWORD status = 0;
        ConnMgrEstablishConnectionSync(&information, &link, 0, &status);
        return status;
    }());
}

TEST_F(OutsideOfTests, ViolationWithoutAHookEndsTheProcess) {
    EXPECT_DEATH(InternetCloseHandle(reinterpret_cast<HINTERNET>(uintptr_t{0x1234})),
                 "simulated handheld: .*unknown handle 0x1234 is not open");
}

TEST_F(OutsideOfTests, HookIsExchanged) {
    const Device::ViolationHook hook = [](const std::string&) {};
    EXPECT_EQ(nullptr, device.SetViolationHook(hook));
    EXPECT_EQ(hook, device.SetViolationHook(nullptr));
}
