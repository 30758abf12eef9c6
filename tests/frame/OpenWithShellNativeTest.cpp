#include "frame/OpenWithShell.h"

#include "support/ScreenTest.h"

namespace {

class OpeningWithShell : public ScreenTest {
protected:
    const WideString page = TEXT("http://www.orvande.example/forgot.htm");
};

}  // namespace

TEST_F(OpeningWithShell, OpensTheTargetWithItsProgramAndDoesNotWait) {
    EXPECT_TRUE(OpenWithShell(page, nullptr, false));
    const std::vector<std::string> expected = {
        R"(ShellExecuteExW({size ok, mask 0x0, owner null, verb "open", file ")"
        R"(http://www.orvande.example/forgot.htm", show 5}) = TRUE)"};
    EXPECT_EQ(expected, device.Calls({"ShellExecuteExW", "WaitForSingleObject", "CloseHandle"}));
}

TEST_F(OpeningWithShell, WaitsWithoutLimitForTheProgramAndClosesItsHandle) {
    EXPECT_TRUE(OpenWithShell(page, nullptr, true));
    ASSERT_EQ(1u, device.StartedPrograms().size());
    EXPECT_EQ(ULONG{SEE_MASK_NOCLOSEPROCESS}, device.StartedPrograms()[0].mask);
    const std::vector<std::string> expected = {"WaitForSingleObject(process 1, 0xFFFFFFFF) = 0",
                                               "CloseHandle(process 1) = TRUE"};
    EXPECT_EQ(expected, device.Calls({"WaitForSingleObject", "CloseHandle"}));
}

TEST_F(OpeningWithShell, DoesNotWaitWhenNoProgramIsTold) {
    device.SetGivesProcessHandles(false);
    EXPECT_TRUE(OpenWithShell(page, nullptr, true));
    EXPECT_EQ(std::vector<std::string>{}, device.Calls({"WaitForSingleObject", "CloseHandle"}));
}

TEST_F(OpeningWithShell, TargetThatCannotBeOpenedIsFalseWithAndWithoutWaiting) {
    device.FailCall("ShellExecuteExW", 1, ERROR_FILE_NOT_FOUND, Failing::FromThereOn);
    EXPECT_FALSE(OpenWithShell(page, nullptr, false));
    EXPECT_FALSE(OpenWithShell(page, nullptr, true));
    EXPECT_EQ(std::vector<std::string>{}, device.Calls({"WaitForSingleObject", "CloseHandle"}));
}
