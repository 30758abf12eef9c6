/* Signing in with the real dialog; the service is scripted. */
#include <gmock/gmock.h>

#include <optional>

#include "account/AccountScreenTest.h"
#include "helpers/ClosedPort.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"

namespace {

using testing::ElementsAre;
using namespace account_texts;

class AccountSignIn : public AccountScreenTest {
protected:
    void Accept() { server.Answer(MapShopReply().Int32(0).Int32(0).bytes); }

    /* Signs in as "Anna" and expects that message, after which the dialog is still there. */
    void ExpectRefusal(const std::wstring& text) {
        EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(signInCaption);
            TypeCredentials(dialog, L"Anna", L"Secret-1");
            PressSignIn(dialog);
            ExpectMessage(user, dialog, text, nullptr);
            EXPECT_EQ(L"Anna", TextOf(dialog, USER_ID_FIELD));
            EXPECT_EQ(L"Secret-1", TextOf(dialog, PASSWORD_FIELD));
            ChooseCancel(user, dialog);
        }));
        EXPECT_EQ(L"", account.password);
        EXPECT_EQ("no file", SettingsFile());
    }

    ScriptedServer server;
    std::optional<WebProxy> proxy{std::in_place, server.Port()};
};

}  // namespace

TEST_F(AccountSignIn, StartsEmptyInTheUserIdFieldWithTwoSoftKeysAndAMenu) {
    account.password = L"without a user ID";
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        EXPECT_EQ(L"", TextOf(dialog, USER_ID_FIELD));
        EXPECT_EQ(L"", TextOf(dialog, PASSWORD_FIELD));
        EXPECT_EQ(USER_ID_FIELD, FocusOf(dialog));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Sign in", L"Menu"));
        PressButton(MenuBarOf(dialog), 1);
        EXPECT_THAT(ItemTextsOf(user.WaitForMenu()), ElementsAre(L"New Account", L"Forgot", L"Cancel"));
        PressKey(dialog, VK_UP);
        PressKey(dialog, VK_RETURN);
    }));
}

TEST_F(AccountSignIn, SoftKeyPressedWhileAMessageIsShownCountsForNothing) {
    server.Answer(MapShopReply().Int32(5).bytes);
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        PressSignIn(dialog);
        const HWND box = user.ReadMessage(title).box;
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        user.WaitUntil("the dialog can be used again",
                       [&] { return IsWindowEnabled(dialog) && !IsWindow(box); });
        ChooseCancel(user, dialog);
    }));
    EXPECT_EQ(1u, server.TakeRequests().size());
}

TEST_F(AccountSignIn, KnownUserStartsInThePasswordFieldWithTheBoxUnticked) {
    account.userId = L"Anna";
    account.password = L"secret1";
    account.savePassword = true;
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        EXPECT_EQ(L"Anna", TextOf(dialog, USER_ID_FIELD));
        EXPECT_EQ(L"secret1", TextOf(dialog, PASSWORD_FIELD));
        EXPECT_EQ(PASSWORD_FIELD, FocusOf(dialog));
        EXPECT_FALSE(IsTicked(dialog, SAVE_PASSWORD_BOX));
        ChooseCancel(user, dialog);
    }));
}

TEST_F(AccountSignIn, SendsWhatWasTypedAndKeepsTheUserId) {
    Accept();
    EXPECT_TRUE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        PressSignIn(dialog);
    }));
    EXPECT_EQ(L"Anna", account.userId);
    EXPECT_EQ(L"Secret-1", account.password);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_EQ("POST http://online.orvande.example:80/cgi-bin/licapp.cgi HTTP/1.1", requests[0].line);
    EXPECT_EQ("ZR_CgiClient-SP", requests[0].Header("User-Agent"));
    EXPECT_EQ(MapShopReply().Int32(8).Text(L"Anna").Text(L"Secret-1").Int32(0x01020304).bytes,
              requests[0].body);
}

TEST_F(AccountSignIn, TickedBoxKeepsThePasswordTooInItsScrambledForm) {
    Accept();
    EXPECT_TRUE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Ab1-x!");
        Click(dialog, SAVE_PASSWORD_BOX);
        user.WaitUntil("the tick", [&] { return IsTicked(dialog, SAVE_PASSWORD_BOX); });
        PressSignIn(dialog);
    }));
    EXPECT_TRUE(account.savePassword);
    // The codes 11, 12, 2 and 34 and twelve zeros, with the key.
    EXPECT_EQ("Passwd=50c81cb536e86d02af73d9488c21f5ba\r\nUserID=Anna\r\n", SettingsFile());
    StartAgain();
    EXPECT_EQ(L"Anna", account.userId);
    EXPECT_EQ(L"ab1x", account.password);
}

TEST_F(AccountSignIn, UntickedBoxRemovesAPasswordThatWasKept) {
    PutSettings("Passwd=50c81cb536e86d02af73d9488c21f5ba\r\nUserID=Anna\r\n");
    StartAgain();
    Accept();
    EXPECT_TRUE(SignInAs([](const ScreenUser& user) { PressSignIn(user.WaitForDialog(signInCaption)); }));
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountSignIn, MissingUserIdOrPasswordIsToldAndNothingIsSent) {
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        for (const auto& [userId, password] : {std::pair(L"", L""), {L"Anna", L""}, {L"", L"Secret-1"}}) {
            TypeCredentials(dialog, userId, password);
            PressSignIn(dialog);
            ExpectMessage(user, dialog, nothingToCheck, IDI_INFORMATION);
        }
        ChooseCancel(user, dialog);
    }));
    EXPECT_TRUE(server.TakeRequests().empty());
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(AccountSignIn, UnknownUserIsTold) {
    server.Answer(MapShopReply().Int32(4).bytes);
    ExpectRefusal(unknownUser);
}

TEST_F(AccountSignIn, WrongPasswordIsTold) {
    server.Answer(MapShopReply().Int32(5).bytes);
    ExpectRefusal(wrongPassword);
}

TEST_F(AccountSignIn, AnythingElseIsAProblemWithTheServer) {
    const std::string accepted = MapShopReply().Int32(0).bytes;
    const std::string half(2, '\0');
    const struct {
        const char* name;
        ConnectionScript script;
    } cases[] = {
        {"another status", {HttpReply(MapShopReply().Int32(7).Int32(0).bytes)}},
        {"status -1", {HttpReply(MapShopReply().Int32(-1).Int32(0).bytes)}},
        {"half a status of zeros", {HttpReply(half)}},
        {"no state", {HttpReply(accepted)}},
        {"half a state of zeros", {HttpReply(accepted + half)}},
        {"another state", {HttpReply(accepted + MapShopReply().Int32(1).bytes)}},
        {"an empty body", {HttpReply("")}},
        {"a body that breaks off after the status",
         {"HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n" + accepted, ConnectionScript::Ending::Reset}},
        {"a page for people", {HttpReply("<html>Log in to this network first</html>")}},
        {"no reply", {""}},
        {"a connection that is cut", {"", ConnectionScript::Ending::Reset, false}},
    };
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.name);
        server.Answer(bad.script);
        ExpectRefusal(problem);
    }
}

TEST_F(AccountSignIn, ServiceThatCannotBeReachedIsAProblemToo) {
    const ClosedPort closed;
    proxy.emplace(closed.Number());
    ExpectRefusal(problem);
}

TEST_F(AccountSignIn, SecondTrySignsInWithWhatTheFieldsHaveKept) {
    server.Answer(MapShopReply().Int32(5).bytes);
    EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        PressSignIn(dialog);
        ExpectMessage(user, dialog, wrongPassword, nullptr);
        Accept();
        PressSignIn(dialog);
    }));
    EXPECT_EQ(L"Secret-1", account.password);
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ(requests[0].body, requests[1].body);
}

TEST_F(AccountSignIn, BackKeyDeletesInTheFieldAndClosesNothing) {
    Accept();
    EXPECT_TRUE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-12");
        PressKey(dialog, VK_ESCAPE);
        user.WaitUntil("the deleted character",
                       [&] { return TextOf(dialog, PASSWORD_FIELD) == L"Secret-1"; });
        PressSignIn(dialog);
    }));
    EXPECT_EQ(L"Secret-1", account.password);
}

TEST_F(AccountSignIn, CommandsWithANotificationCodeAreNotTheMenus) {
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        for (const int command : {NEW_ACCOUNT_COMMAND, FORGOT_COMMAND}) {
            DWORD_PTR ignored = 0;
            EXPECT_TRUE(SendMessageTimeoutW(dialog, WM_COMMAND, MAKEWPARAM(command, 1), 0, SMTO_NORMAL, 10000,
                                            &ignored));
        }
        EXPECT_TRUE(IsWindowEnabled(dialog));
        ChooseCancel(user, dialog);
    }));
}

TEST_F(AccountSignIn, CancelSignsNobodyInAndSavesNothing) {
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        ChooseCancel(user, dialog);
    }));
    EXPECT_EQ(L"", account.userId);
    EXPECT_EQ("no file", SettingsFile());
    EXPECT_TRUE(server.TakeRequests().empty());
}
