/* The sample of the companion in examples/c, with the running service. */
#include "account/AccountServiceTest.h"
#include "helpers/ChildProcess.h"
#include "helpers/ProgramFolder.h"

namespace {

class AccountSample : public AccountServiceTest {
protected:
    static void Expect(DWORD exitCode, const std::string& output, const std::wstring& arguments) {
        const std::wstring program = L"\"" + ProgramFolder() + L"\\c-account.exe\" ";
        const ChildOutcome outcome = RunChild(program + arguments, ProgramFolder());
        EXPECT_EQ(exitCode, outcome.exitCode);
        EXPECT_EQ(output, outcome.output);
    }

    static std::string Narrowed(const std::wstring& ascii) { return {ascii.begin(), ascii.end()}; }
};

}  // namespace

TEST_F(AccountSample, SignsInWithItsArguments) {
    const std::wstring user = NewUserId(L"sample");
    CreateAccountOf(user, L"secret1");
    Expect(0, "signed in as " + Narrowed(user) + "\n", user + L" secret1");
    Expect(1, "the password is wrong\n", user + L" secret2");
    Expect(1, "there is no such user\n", L"x" + user + L" secret1");
}

TEST_F(AccountSample, SignsInWithWhatWasSaved) {
    const std::wstring user = NewUserId(L"sample");
    account.savePassword = true;
    CreateAccountOf(user, L"secret1");
    Expect(0, "signed in as " + Narrowed(user) + "\n", L"");
}

TEST_F(AccountSample, OtherArgumentsAreRefused) {
    Expect(2, "usage: account [USER PASSWORD]\n", L"anna");
    Expect(2, "usage: account [USER PASSWORD]\n", L"anna " + std::wstring(256, L'x'));
}
