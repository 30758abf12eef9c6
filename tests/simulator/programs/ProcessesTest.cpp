#include "SimulatorTest.h"

namespace {

class Processes : public SimulatorTest {
protected:
    static SHELLEXECUTEINFOW Info(ULONG mask) {
        SHELLEXECUTEINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = mask;
        info.lpVerb = u"open";
        info.lpFile = u"http://host/page.htm";
        info.nShow = SW_SHOW;
        info.hProcess = reinterpret_cast<HANDLE>(uintptr_t{0x77});
        return info;
    }
};

}  // namespace

TEST_F(Processes, StartedProgramIsRemembered) {
    SHELLEXECUTEINFOW info = Info(0);
    EXPECT_TRUE(ShellExecuteExW(&info));
    EXPECT_EQ(reinterpret_cast<HANDLE>(uintptr_t{0x77}), info.hProcess) << "nobody asked for a process";
    ASSERT_EQ(1u, device.StartedPrograms().size());
    const StartedProgram& started = device.StartedPrograms()[0];
    EXPECT_EQ(u"open", started.verb);
    EXPECT_EQ(u"http://host/page.htm", started.file);
    EXPECT_EQ(nullptr, started.owner);
    EXPECT_EQ(SW_SHOW, started.show);
    EXPECT_FALSE(started.hasHandle);
    EXPECT_EQ(Lines{R"(ShellExecuteExW({size ok, mask 0x0, owner null, verb "open", )"
                    R"(file "http://host/page.htm", show 5}) = TRUE)"},
              device.Calls());
}

TEST_F(Processes, ProcessIsGivenWaitedForAndClosed) {
    SHELLEXECUTEINFOW info = Info(SEE_MASK_NOCLOSEPROCESS);
    EXPECT_TRUE(ShellExecuteExW(&info));
    EXPECT_TRUE(device.StartedPrograms()[0].hasHandle);
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForSingleObject(info.hProcess, 10));
    EXPECT_FALSE(device.StartedPrograms()[0].isWaitedFor);
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(info.hProcess, INFINITE));
    EXPECT_TRUE(device.StartedPrograms()[0].isWaitedFor);
    EXPECT_TRUE(CloseHandle(info.hProcess));
    EXPECT_EQ((Lines{"WaitForSingleObject(process 1, 0x0000000A) = 258",
                     "WaitForSingleObject(process 1, 0xFFFFFFFF) = 0", "CloseHandle(process 1) = TRUE"}),
              device.Calls({"WaitForSingleObject", "CloseHandle"}));
}

TEST_F(Processes, DocumentMayBringNoProcess) {
    device.SetGivesProcessHandles(false);
    SHELLEXECUTEINFOW info = Info(SEE_MASK_NOCLOSEPROCESS);
    EXPECT_TRUE(ShellExecuteExW(&info));
    EXPECT_EQ(nullptr, info.hProcess);
    EXPECT_FALSE(device.StartedPrograms()[0].hasHandle);
}

TEST_F(Processes, StructureMustHaveItsSize) {
    SHELLEXECUTEINFOW info = Info(0);
    info.cbSize = 59;
    EXPECT_FALSE(ShellExecuteExW(&info));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    EXPECT_FALSE(ShellExecuteExW(nullptr));
    EXPECT_TRUE(device.StartedPrograms().empty());
}

TEST_F(Processes, FailuresAreOrdered) {
    device.FailCall("ShellExecuteExW", 1, ERROR_NO_ASSOCIATION);
    SHELLEXECUTEINFOW info = Info(SEE_MASK_NOCLOSEPROCESS);
    EXPECT_FALSE(ShellExecuteExW(&info));
    EXPECT_EQ(DWORD{ERROR_NO_ASSOCIATION}, GetLastError());
    EXPECT_TRUE(device.StartedPrograms().empty());
    EXPECT_TRUE(ShellExecuteExW(&info));
    device.FailCall("WaitForSingleObject", 1, 6);
    EXPECT_EQ(DWORD{WAIT_FAILED}, WaitForSingleObject(info.hProcess, INFINITE));
    device.FailCall("CloseHandle", 1, 6);
    EXPECT_FALSE(CloseHandle(info.hProcess)) << "closed all the same";
}

TEST_F(Processes, ProcessLeftOpenAndWaitForNoneAreViolations) {
    SHELLEXECUTEINFOW info = Info(SEE_MASK_NOCLOSEPROCESS);
    ShellExecuteExW(&info);
    EXPECT_EQ(DWORD{WAIT_FAILED}, WaitForSingleObject(reinterpret_cast<HANDLE>(uintptr_t{5}), INFINITE));
    device.EndTest();
    EXPECT_EQ((Lines{"WaitForSingleObject(unknown handle 0x5, 0xFFFFFFFF): unknown handle 0x5 is not open",
                     "process 1 is still open at the end of the test"}),
              TakeViolations());
}

TEST_F(Processes, EndOfThisProcessCallsTheHookFirst) {
    EXPECT_EXIT(
        {
            device.SetTerminationHook([](UINT code) { std::fprintf(stderr, "ends with %u", code); });
            TerminateProcess(GetCurrentProcess(), 3);
        },
        ::testing::ExitedWithCode(3), "ends with 3");
    EXPECT_EXIT(TerminateProcess(reinterpret_cast<HANDLE>(uintptr_t{66}), 1), ::testing::ExitedWithCode(1),
                "")
        << "the handheld's name for this process";
}

TEST_F(Processes, OtherProcessesAreNotEnded) {
    EXPECT_FALSE(TerminateProcess(nullptr, 1));
    EXPECT_EQ(1u, TakeViolations().size());
    device.FailCall("TerminateProcess", 1, 5);
    EXPECT_FALSE(TerminateProcess(GetCurrentProcess(), 1));
}
