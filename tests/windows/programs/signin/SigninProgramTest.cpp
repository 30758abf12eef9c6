/* The program signin: a process of its own with dialogs, which prints who has signed in. */
#include <chrono>
#include <future>
#include <stdexcept>

#include "account/AccountServiceTest.h"
#include "helpers/ChildProcess.h"
#include "helpers/ProgramFolder.h"

namespace {

using namespace account_texts;
using namespace std::chrono_literals;

/* One run of the program, and its user. What the user waits for comes within 20 s, or the program ends: else
 * std::runtime_error is thrown. */
class SigninRun {
public:
    SigninRun()
        : outcome(std::async(std::launch::async, [] {
              return RunChild(L"\"" + ProgramFolder() + L"\\signin.exe\"", ProgramFolder());
          })) {}

    /* Closes what a user who gave up has left open. */
    ~SigninRun() {
        while (outcome.valid() && outcome.wait_for(50ms) != std::future_status::ready) {
            for (const WCHAR* caption : {title, creationCaption, signInCaption})
                PostMessageW(Find(caption), WM_COMMAND, IDCANCEL, 0);
        }
    }

    SigninRun(const SigninRun&) = delete;
    SigninRun& operator=(const SigninRun&) = delete;

    HWND WaitForDialog(const std::wstring& caption) {
        HWND dialog = nullptr;
        WaitUntil([&] {
            dialog = Find(caption);
            return dialog != nullptr;
        });
        return dialog;
    }

    /* Expects a message box and closes it. */
    void ExpectBox(HWND owner, const std::wstring& text) {
        constexpr int textControl = 0xFFFF;
        const HWND box = WaitForDialog(title);
        EXPECT_EQ(text, TextOf(box, textControl));
        EXPECT_EQ(owner, GetWindow(box, GW_OWNER));
        Command(box, IDOK);
        WaitUntil([&] { return !IsWindow(box) && IsWindowEnabled(owner); });
    }

    static void Command(HWND dialog, int id) { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); }

    void ExpectEnd(DWORD exitCode, const std::string& output) {
        if (outcome.wait_for(20s) != std::future_status::ready)
            throw std::runtime_error("the program has not ended");
        const ChildOutcome ended = outcome.get();
        EXPECT_EQ(exitCode, ended.exitCode);
        EXPECT_EQ(output, ended.output);
        EXPECT_EQ("", ended.errors);
    }

private:
    /* A dialog that can be used, or null. */
    static HWND Find(const std::wstring& caption) {
        const HWND window = FindWindowW(L"#32770", caption.c_str());
        return window && IsWindowVisible(window) && IsWindowEnabled(window) ? window : nullptr;
    }

    /* The windows of another process tell nothing; its end does. */
    template <class Condition>
    void WaitUntil(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (!condition()) {
            if (outcome.wait_for(10ms) == std::future_status::ready)
                throw std::runtime_error("the program has ended: " + outcome.get().output);
            if (std::chrono::steady_clock::now() > end) throw std::runtime_error("nothing has come");
        }
    }

    std::future<ChildOutcome> outcome;
};

class SigninProgram : public AccountServiceTest {};

}  // namespace

TEST_F(SigninProgram, CreatesAnAccountAndSignsInToItAtTheNextStarts) {
    const std::wstring userId = NewUserId(L"Zo\xEB");
    const std::string ascii(userId.begin() + 3, userId.end());
    const std::string greeting = "Signed in as Zo\xC3\xAB" + ascii + "\n";
    {
        SigninRun run;
        const HWND dialog = run.WaitForDialog(signInCaption);
        EXPECT_EQ(L"", TextOf(dialog, USER_ID_FIELD));
        SigninRun::Command(dialog, NEW_ACCOUNT_COMMAND);
        const HWND creation = run.WaitForDialog(creationCaption);
        Put(creation, USER_ID_FIELD, userId);
        Put(creation, PASSWORD_FIELD, L"Secret-1");
        SigninRun::Command(creation, IDOK);
        run.ExpectBox(creation, mismatch);
        Put(creation, RETYPE_FIELD, L"Secret-1");
        Put(creation, EMAIL_FIELD, L"z" + std::wstring(ascii.begin(), ascii.end()) + L"@example.org");
        SigninRun::Command(creation, IDOK);
        run.ExpectEnd(0, greeting);
        EXPECT_EQ("UserID=Zo%eb" + ascii + "\r\n", SettingsFile());
    }
    {
        SigninRun run;
        const HWND dialog = run.WaitForDialog(signInCaption);
        EXPECT_EQ(userId, TextOf(dialog, USER_ID_FIELD));
        Put(dialog, PASSWORD_FIELD, L"Secret-2");
        SigninRun::Command(dialog, IDOK);
        run.ExpectBox(dialog, wrongPassword);
        Put(dialog, PASSWORD_FIELD, L"Secret-1");
        SendDlgItemMessageW(dialog, SAVE_PASSWORD_BOX, BM_SETCHECK, BST_CHECKED, 0);
        SigninRun::Command(dialog, IDOK);
        run.ExpectEnd(0, greeting);
        EXPECT_EQ(0U, SettingsFile().find("Passwd="));
    }
    SigninRun run;
    // The password is there.
    SigninRun::Command(run.WaitForDialog(signInCaption), IDOK);
    run.ExpectEnd(0, greeting);
}

TEST_F(SigninProgram, CancelledSaysSo) {
    SigninRun run;
    SigninRun::Command(run.WaitForDialog(signInCaption), IDCANCEL);
    run.ExpectEnd(1, "Nobody is signed in.\n");
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(SigninProgram, SpeaksTheUsersLanguage) {
    SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                     BytesOf(std::wstring(L"French\0", 7)));
    SigninRun run;
    SigninRun::Command(run.WaitForDialog(L"Connexion \xE0 votre compte"), IDCANCEL);
    run.ExpectEnd(1, "Nobody is signed in.\n");
}
