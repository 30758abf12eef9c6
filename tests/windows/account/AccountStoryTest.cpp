/* One user and the account, with the real dialogs and the reference service. */
#include <gmock/gmock.h>

#include "account/AccountServiceTest.h"

namespace {

using testing::HasSubstr;
using namespace account_texts;

const std::wstring typedPassword = L"Zugvogel-Quartz 7, Nr. 42";
const std::wstring savedPassword = L"zugvogelquartz7n";

std::string Narrowed(const std::wstring& ascii) {
    return {ascii.begin(), ascii.end()};
}

class AccountStory : public AccountServiceTest {
protected:
    void SetUp() override {
        AccountServiceTest::SetUp();
        neighbour = NewUserId(L"neighbour");
        zoe = NewUserId(L"zoe");
        ASSERT_NO_FATAL_FAILURE(CreateAccountOf(neighbour, L"abc123"));
        DeleteFileW(SettingsPath().c_str());
        StartAgain();
    }

    [[nodiscard]] std::string OnlyTheUserId() const { return "UserID=" + Narrowed(zoe) + "\r\n"; }

    [[nodiscard]] std::wstring Email(const std::wstring& userId) const { return userId + L"@example.org"; }

    /* What the service does not take as an account, one thing after the other. The dialog stays each time. */
    void TryInVain(const ScreenUser& user, HWND dialog) const {
        const std::wstring good = typedPassword;
        const struct {
            NewAccount values;
            std::wstring message;
        } attempts[] = {
            {{zoe, good, L"zugvogel-quartz 7, nr. 42", L"Zoe", Email(zoe)}, mismatch},
            {{zoe, L"ab-1.2+3", L"ab-1.2+3", L"Zoe", Email(zoe)}, shortPassword},
            {{zoe, L"", L"", L"Zoe", Email(zoe)}, shortPassword},
            {{L"", good, good, L"Zoe", Email(zoe)}, L"The server returned error code 11"},
            {{zoe, good, good, L"Zoe", L"zoe at home"}, badEmail},
            {{zoe, good, good, L"", L""}, badEmail},
            {{neighbour, good, good, L"Zoe", Email(zoe)}, nameTaken},
            {{L"NEIGHBOUR" + neighbour.substr(9), good, good, L"Zoe", Email(zoe)}, nameTaken},
        };
        for (const auto& attempt : attempts) {
            Fill(dialog, attempt.values);
            PressDone(dialog);
            ExpectMessage(user, dialog, attempt.message, IDI_HAND);
        }
        EXPECT_EQ(typedPassword, TextOf(dialog, RETYPE_FIELD));
    }

    /* The neighbour's address, which ends the dialog. */
    void TryTheNeighboursAddress(const ScreenUser& user, HWND dialog) const {
        Fill(dialog, {zoe, L"abc123", L"abc123", L"Zoe", Email(neighbour)});
        PressDone(dialog);
        const ScreenUser::Message message = user.TakeMessage(title);
        EXPECT_EQ(emailTaken, message.text);
        EXPECT_EQ(dialog, message.owner);
        user.WaitUntil("the end of the dialog", [&] { return !IsWindow(dialog); });
    }

    void CreateAfterManyAttempts() {
        EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
            const HWND signIn = user.WaitForDialog(signInCaption);
            EXPECT_EQ(USER_ID_FIELD, FocusOf(signIn));
            TypeCredentials(signIn, zoe, typedPassword);
            PressSignIn(signIn);
            ExpectMessage(user, signIn, unknownUser, nullptr);

            ChooseNewAccount(user, signIn);
            const HWND first = user.WaitForDialog(creationCaption);
            EXPECT_EQ(signIn, GetWindow(first, GW_OWNER));
            EXPECT_EQ(zoe, TextOf(first, USER_ID_FIELD));
            EXPECT_EQ(typedPassword, TextOf(first, PASSWORD_FIELD));
            TryInVain(user, first);
            TryTheNeighboursAddress(user, first);

            EXPECT_EQ(signIn, user.WaitForDialog(signInCaption));
            EXPECT_EQ(zoe, TextOf(signIn, USER_ID_FIELD));
            EXPECT_EQ(typedPassword, TextOf(signIn, PASSWORD_FIELD));
            EXPECT_EQ("no file", SettingsFile());
            ChooseNewAccount(user, signIn);
            const HWND second = user.WaitForDialog(creationCaption);
            Fill(second, {zoe, typedPassword, typedPassword, L"Zoe", Email(zoe)});
            PressDone(second);
        }));
        EXPECT_EQ(zoe, account.userId);
        EXPECT_EQ(typedPassword, account.password);
        EXPECT_EQ(OnlyTheUserId(), SettingsFile());
    }

    void SignInWithoutKeepingThePassword() {
        StartAgain();
        EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(signInCaption);
            EXPECT_EQ(zoe, TextOf(dialog, USER_ID_FIELD));
            EXPECT_EQ(L"", TextOf(dialog, PASSWORD_FIELD));
            EXPECT_EQ(PASSWORD_FIELD, FocusOf(dialog));
            PressSignIn(dialog);
            ExpectMessage(user, dialog, nothingToCheck, IDI_INFORMATION);
            Type(dialog, PASSWORD_FIELD, L"Zugvogel-Quartz 8");
            PressSignIn(dialog);
            ExpectMessage(user, dialog, wrongPassword, nullptr);
            EXPECT_EQ(L"", account.password);
            EXPECT_EQ(L"Zugvogel-Quartz 8", TextOf(dialog, PASSWORD_FIELD));
            Type(dialog, PASSWORD_FIELD, typedPassword);
            PressSignIn(dialog);
        }));
        EXPECT_EQ(OnlyTheUserId(), SettingsFile());
    }

    void SignInAndKeepThePassword() {
        StartAgain();
        EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(signInCaption);
            EXPECT_EQ(L"", TextOf(dialog, PASSWORD_FIELD));
            Type(dialog, PASSWORD_FIELD, typedPassword);
            Click(dialog, SAVE_PASSWORD_BOX);
            user.WaitUntil("the tick", [&] { return IsTicked(dialog, SAVE_PASSWORD_BOX); });
            PressSignIn(dialog);
        }));
        EXPECT_EQ("Passwd=7fdb0fb72ff96214b46cd2549205fda2\r\n" + OnlyTheUserId(), SettingsFile());
    }

    void SignInWithWhatWasKept() {
        StartAgain();
        EXPECT_EQ(savedPassword, account.password);
        EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(signInCaption);
            EXPECT_EQ(savedPassword, TextOf(dialog, PASSWORD_FIELD));
            EXPECT_FALSE(IsTicked(dialog, SAVE_PASSWORD_BOX));
            PressSignIn(dialog);
        }));
        EXPECT_EQ(OnlyTheUserId(), SettingsFile()) << "the box was not ticked";
    }

    std::wstring neighbour;
    std::wstring zoe;
};

/* A password in the forms in which it could be written somewhere. */
std::vector<std::string> FormsOf(const std::wstring& password) {
    return {Narrowed(password), DeviceTest::BytesOf(password)};
}

}  // namespace

TEST_F(AccountStory, OfOneUserFromTheFirstStartToASavedPassword) {
    ASSERT_NO_FATAL_FAILURE(CreateAfterManyAttempts());
    ASSERT_NO_FATAL_FAILURE(SignInWithoutKeepingThePassword());
    ASSERT_NO_FATAL_FAILURE(SignInAndKeepThePassword());
    ASSERT_NO_FATAL_FAILURE(SignInWithWhatWasKept());
}

TEST_F(AccountStory, PasswordIsInNoFileInAFormThatCanBeRead) {
    CreateAfterManyAttempts();
    SignInAndKeepThePassword();
    const std::string kept = SettingsFile() + WhatTheServiceKeeps();
    EXPECT_THAT(kept, HasSubstr("Passwd="));
    EXPECT_THAT(kept, HasSubstr("POST http://online.orvande.example:80/cgi-bin/licapp.cgi"));
    EXPECT_THAT(kept, HasSubstr(Narrowed(zoe))) << "the account is in the database";
    for (const std::wstring& secret :
         {typedPassword, savedPassword, std::wstring(L"Zugvogel"), std::wstring(L"zugvogel"),
          std::wstring(L"Quartz"), std::wstring(L"quartz")}) {
        for (const std::string& form : FormsOf(secret))
            EXPECT_EQ(std::string::npos, kept.find(form)) << Narrowed(secret);
    }
}
