/* An application in C, which the import library binds to the companion, with the real dialogs and the running
 * service. */
#include "account/AccountServiceTest.h"
#include "helpers/ChildProcess.h"
#include "helpers/ProgramFolder.h"

namespace {

const std::wstring password = L"Zugvogel-Quartz 7";

class PlainAccount : public AccountServiceTest {
protected:
    /* What the program prints; `arguments` hold no quotes. */
    static std::string Run(const std::vector<std::wstring>& arguments) {
        std::wstring line = L"\"" + ProgramFolder() + L"\\plain-account.exe\"";
        for (const std::wstring& argument : arguments)
            line += L" \"" + argument + L"\"";
        const ChildOutcome outcome = RunChild(line, ProgramFolder());
        EXPECT_EQ(0U, outcome.exitCode) << outcome.errors;
        return outcome.output;
    }

    static std::string Narrowed(const std::wstring& ascii) { return {ascii.begin(), ascii.end()}; }

    /* Creates an account in the dialog. */
    static std::string Create(const std::wstring& user) {
        return Run({L"show-create", L"in=Create Account", L"1001=" + user, L"1003=" + password,
                    L"1005=" + password, L"1010=" + user + L"@example.org", L"command=1"});
    }

    static std::string SignIn(const std::wstring& user, const std::wstring& typed) {
        return Run({L"signin", L"user=" + user, L"password=" + typed});
    }
};

}  // namespace

TEST_F(PlainAccount, EveryFunctionRefusesWhatIsNoRecord) {
    EXPECT_EQ("done\n", Run({L"refusals"}));
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(PlainAccount, CreatesAnAccountAndSignsInWithoutADialog) {
    const std::wstring user = NewUserId(L"plain");
    const std::string record = Narrowed(user + L"|" + password + L"|0\n");
    EXPECT_EQ("1 0x0\n" + record, Create(user));
    EXPECT_EQ("UserID=" + Narrowed(user) + "\r\n", SettingsFile());
    EXPECT_EQ("1 0x0\n" + record, SignIn(user, password));
    EXPECT_EQ("0 0x22000005\n" + Narrowed(user) + "|another1|0\n", SignIn(user, L"another1"));
    EXPECT_EQ("0 0x22000004\nx" + record, SignIn(L"x" + user, password));
}

TEST_F(PlainAccount, SignsInWithTheDialogAndKeepsThePassword) {
    const std::wstring user = NewUserId(L"plain");
    Create(user);
    EXPECT_EQ(Narrowed(account_texts::wrongPassword) + std::string("\n1 0x0\n") +
                  Narrowed(user + L"|" + password + L"|1\n"),
              Run({L"show-signin", L"user=" + user, L"password=another1", L"in=Sign in to Your Account",
                   L"press=1017", L"command=1", L"in=Orvande Online", L"read", L"command=1",
                   L"in=Sign in to Your Account", L"1003=" + password, L"command=1"}));
    EXPECT_EQ("1 0x0\n" + Narrowed(user) + "|zugvogelquartz7|1\n", Run({L"load"}));
    EXPECT_EQ("1 0x0\n" + Narrowed(user) + "|zugvogelquartz7|0\n", SignIn(user, L"zugvogelquartz7"));
}

TEST_F(PlainAccount, CreatesAnAccountFromTheSignInDialog) {
    const std::wstring user = NewUserId(L"plain");
    EXPECT_EQ("1 0x0\n" + Narrowed(user + L"|" + password + L"|0\n"),
              Run({L"show-signin", L"in=Sign in to Your Account", L"1001=" + user, L"1003=" + password,
                   L"command=1016", L"in=Create Account", L"1005=" + password,
                   L"1010=" + user + L"@example.org", L"command=1"}));
}

TEST_F(PlainAccount, CancelIsTold) {
    EXPECT_EQ("0 0x20000002\nanna|secret1|1\n",
              Run({L"show-signin", L"user=anna", L"password=secret1", L"save=1",
                   L"in=Sign in to Your Account", L"1001=berta", L"command=2"}));
    EXPECT_EQ("0 0x20000002\n||0\n", Run({L"show-create", L"in=Create Account", L"command=2"}));
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(PlainAccount, SavesAndLoads) {
    EXPECT_EQ("0 0x2\n||0\n", Run({L"load"}));
    EXPECT_EQ("1 0x0\nanna|Secret-1|1\n", Run({L"save", L"user=anna", L"password=Secret-1", L"save=1"}));
    EXPECT_EQ("1 0x0\nanna|secret1|1\n", Run({L"load"}));
    EXPECT_EQ("1 0x0\nanna||0\n", Run({L"save", L"user=anna"}));
    EXPECT_EQ("UserID=anna\r\n", SettingsFile());
    const HANDLE open = CreateFileW(SettingsPath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ("0 0x20\nberta||0\n", Run({L"save", L"user=berta"})) << "a file that somebody has open";
    EXPECT_EQ("0 0x20\n||0\n", Run({L"load"}));
    CloseHandle(open);
    EXPECT_EQ("UserID=anna\r\n", SettingsFile());
}
