/* The page for forgotten credentials. */
#include <memory>

#include "account/AccountScreenTest.h"
#include "helpers/LocalFiles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/SavedRegistryValue.h"

namespace {

using namespace account_texts;

/* The program that opens web addresses writes down what it is to open. */
class AccountForgot : public AccountScreenTest {
protected:
    void SetUp() override {
        AccountScreenTest::SetUp();
        address = PathOf(L"address.txt");
        UseBrowser(L"\"" + ProgramFolder() + L"\\keep-argument.exe\" \"" + address + L"\" \"%1\"");
    }

    void TearDown() override {
        browser.reset();
        AccountScreenTest::TearDown();
    }

    void UseBrowser(const std::wstring& command) {
        browser.reset();
        browser = std::make_unique<SavedRegistryValue>(HKEY_CLASSES_ROOT, L"http\\shell\\open\\command", L"",
                                                       command);
    }

    std::wstring address;

private:
    std::unique_ptr<SavedRegistryValue> browser;
};

}  // namespace

TEST_F(AccountForgot, OpensTheServicesPageAndTheDialogStays) {
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        ChooseForgot(user, dialog);
        WaitForFile(address);
        EXPECT_EQ(dialog, user.WaitForDialog(signInCaption));
        EXPECT_EQ(L"Anna", TextOf(dialog, USER_ID_FIELD));
        EXPECT_EQ(L"Secret-1", TextOf(dialog, PASSWORD_FIELD));
        ChooseCancel(user, dialog);
    }));
    EXPECT_EQ("http://www.orvande.example/forgot.htm", ContentOf(address));
}

TEST_F(AccountForgot, PageThatCannotBeOpenedLeavesTheDialogAsItIs) {
    UseBrowser(L"\"" + PathOf(L"missing.exe") + L"\" \"%1\"");
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        PostMessageW(dialog, WM_COMMAND, FORGOT_COMMAND, 0);
        // The system says so itself.
        const ScreenUser::Message message = user.TakeMessage(L"Error");
        EXPECT_EQ(dialog, message.owner);
        EXPECT_EQ(dialog, user.WaitForDialog(signInCaption));
        EXPECT_EQ(L"Anna", TextOf(dialog, USER_ID_FIELD));
        ChooseCancel(user, dialog);
    }));
    EXPECT_FALSE(Exists(address));
}
