/* Many runs in one test: Device::BeginRun. */
#include "SimulatorTest.h"

using Runs = SimulatorTest;

TEST_F(Runs, BeginOnAMachineThatKeepsFilesRegistryAndHosts) {
    device.PutFile(u"\\Temp\\file", "abc");
    device.MakeRegistryKey(HKEY_CURRENT_USER, u"Key");
    device.AddHost(u"host.example", 80, WebReply::WithBody("abc"));
    EXPECT_TRUE(OpenRequest().Send());
    device.BeginRun();
    EXPECT_TRUE(device.Calls().empty());
    EXPECT_TRUE(device.Requests().empty());
    EXPECT_EQ("abc", device.TakeFile(u"\\Temp\\file"));
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, u"Key", 0, KEY_READ, &key));
    RegCloseKey(key);
    EXPECT_TRUE(OpenRequest().Send());
}

TEST_F(Runs, ReportAndCloseWhatIsLeftOpen) {
    InternetOpenW(u"Agent", 0, nullptr, nullptr, 0);
    device.PutFile(u"\\Temp\\file", "abc");
    _wfopen(u"\\Temp\\file", u"r");
    device.BeginRun();
    EXPECT_EQ((Lines{R"(file 1 ("\Temp\file") is still open at the end of the test)",
                     "session 1 is still open at the end of the test"}),
              TakeViolations());
    device.BeginRun();
    EXPECT_EQ(Lines{}, TakeViolations());
}

TEST_F(Runs, ForgetWhatTheUserWasToDoAndWhatWasToFail) {
    device.AnswerMessageBox(IDOK);
    device.UseDialog([](DialogUser&) {});
    device.FailCall("GetModuleHandleW", 1, 1234);
    SetCursor(device.WaitCursor());
    device.BeginRun();
    EXPECT_EQ(device.NormalCursor(), device.CurrentCursor());
    EXPECT_NE(nullptr, GetModuleHandleW(nullptr));
    EXPECT_EQ(Lines{}, TakeViolations());
}

TEST_F(Runs, CloseDataConnectionsThatMayStayUp) {
    CONNMGR_CONNECTIONINFO info{};
    info.cbSize = sizeof info;
    HANDLE link = nullptr;
    DWORD status = 0;
    ConnMgrEstablishConnectionSync(&info, &link, 0, &status);
    device.BeginRun();
    EXPECT_EQ(E_INVALIDARG, ConnMgrReleaseConnection(link, 0));
    EXPECT_EQ(1u, TakeViolations().size());
}
