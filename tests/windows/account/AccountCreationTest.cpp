/* Creating an account with the real dialog; the service is scripted. */
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

const NewAccount anna{L"Anna", L"Secret-1", L"Secret-1", L"Anna \xD6hl", L"anna@example.org"};

class AccountCreation : public AccountScreenTest {
protected:
    void AnswerCode(int32_t code) { server.Answer(MapShopReply().Int32(code).bytes); }

    /* Asks for Anna's account and expects that message; the dialog then stays as it is. */
    void ExpectRefusal(const std::wstring& text) {
        EXPECT_FALSE(Create([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(creationCaption);
            Fill(dialog, anna);
            PressDone(dialog);
            ExpectMessage(user, dialog, text, IDI_HAND);
            EXPECT_EQ(anna.userId, TextOf(dialog, USER_ID_FIELD));
            EXPECT_EQ(anna.password, TextOf(dialog, PASSWORD_FIELD));
            EXPECT_EQ(anna.retyped, TextOf(dialog, RETYPE_FIELD));
            EXPECT_EQ(anna.name, TextOf(dialog, NAME_FIELD));
            EXPECT_EQ(anna.email, TextOf(dialog, EMAIL_FIELD));
            PressCancel(dialog);
        }));
        EXPECT_EQ(anna.userId, account.userId) << "what was tried is kept";
        EXPECT_EQ(anna.password, account.password);
        EXPECT_EQ("no file", SettingsFile());
    }

    /* The body that Anna's account is asked for with. */
    static std::string RequestOf(const NewAccount& values, char updates, int32_t vendor,
                                 WideStringView language) {
        MapShopReply body;
        body.Int32(10)
            .Text(values.userId)
            .Text(values.password)
            .Text(values.name)
            .Text(L"")
            .Text(values.email);
        body.bytes += updates;
        return body.Int32(vendor).Text(language).bytes;
    }

    void ExpectRequest(const std::string& body) {
        const std::vector<CapturedRequest> requests = server.TakeRequests();
        ASSERT_EQ(1U, requests.size());
        EXPECT_EQ("POST http://online.orvande.example:80/cgi-bin/licapp.cgi HTTP/1.1", requests[0].line);
        EXPECT_EQ(body, requests[0].body);
    }

    ScriptedServer server;
    std::optional<WebProxy> proxy{std::in_place, server.Port()};
};

}  // namespace

TEST_F(AccountCreation, StartsWithWhatTheSignInDialogHeld) {
    account.userId = L"Anna";
    account.password = L"Secret-1";
    EXPECT_FALSE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        EXPECT_EQ(L"Anna", TextOf(dialog, USER_ID_FIELD));
        EXPECT_EQ(L"Secret-1", TextOf(dialog, PASSWORD_FIELD));
        EXPECT_EQ(L"", TextOf(dialog, RETYPE_FIELD));
        EXPECT_EQ(L"", TextOf(dialog, NAME_FIELD));
        EXPECT_EQ(L"", TextOf(dialog, EMAIL_FIELD));
        EXPECT_TRUE(IsTicked(dialog, WANTS_UPDATES_BOX));
        EXPECT_EQ(USER_ID_FIELD, FocusOf(dialog));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Done", L"Cancel"));
        PressCancel(dialog);
    }));
    EXPECT_TRUE(server.TakeRequests().empty());
}

TEST_F(AccountCreation, SendsEveryFieldAndKeepsTheUserId) {
    AnswerCode(0);
    EXPECT_TRUE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Fill(dialog, anna);
        PressDone(dialog);
    }));
    EXPECT_EQ(L"Anna", account.userId);
    EXPECT_EQ(L"Secret-1", account.password);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    ExpectRequest(RequestOf(anna, 1, 0, L"English"));
}

TEST_F(AccountCreation, KeepsThePasswordTooIfTheLastSignInWouldHave) {
    account.savePassword = true;
    AnswerCode(0);
    EXPECT_TRUE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Fill(dialog, {L"Anna", L"Ab1-x!", L"Ab1-x!", L"", L""});
        PressDone(dialog);
    }));
    EXPECT_EQ("Passwd=50c81cb536e86d02af73d9488c21f5ba\r\nUserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountCreation, SendsTheTickTheVendorAndTheLanguage) {
    SetRegistryValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Orvande Test Navigator", L"web_vendor", REG_DWORD,
                     std::string("\x78\x56\x34\x82", 4));
    SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                     BytesOf(std::wstring(L"Fran\xE7"
                                          L"ais\0",
                                          9)));
    AnswerCode(0);
    EXPECT_TRUE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Fill(dialog, anna);
        Click(dialog, WANTS_UPDATES_BOX);
        user.WaitUntil("the box without a tick", [&] { return !IsTicked(dialog, WANTS_UPDATES_BOX); });
        PressDone(dialog);
    }));
    ExpectRequest(RequestOf(anna, 0, static_cast<int32_t>(0x82345678),
                            L"Fran\xE7"
                            L"ais"));
}

TEST_F(AccountCreation, EmptyFieldsAreLeftToTheService) {
    AnswerCode(0);
    EXPECT_TRUE(Create([](const ScreenUser& user) { PressDone(user.WaitForDialog(creationCaption)); }));
    ExpectRequest(RequestOf({}, 1, 0, L"English"));
    EXPECT_EQ("", SettingsFile());
}

TEST_F(AccountCreation, PasswordsThatDifferInAnythingAreToldAndNothingIsSent) {
    EXPECT_FALSE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        for (const auto& [password, retyped] : {std::pair(L"abc123", L"ABC123"),
                                                {L"abc123", L"abc1234"},
                                                {L"abc123", L""},
                                                {L"", L"abc123"},
                                                {L"abc123", L"abc123 "}}) {
            Fill(dialog, {L"Anna", password, retyped, L"Anna", L"anna@example.org"});
            PressDone(dialog);
            ExpectMessage(user, dialog, mismatch, IDI_HAND);
            EXPECT_EQ(L"", TextOf(dialog, RETYPE_FIELD));
            EXPECT_EQ(password, TextOf(dialog, PASSWORD_FIELD));
        }
        PressCancel(dialog);
    }));
    EXPECT_TRUE(server.TakeRequests().empty());
    EXPECT_EQ(L"", account.userId) << "nothing was tried";
}

TEST_F(AccountCreation, EveryRefusalHasItsMessageAndTheDialogStays) {
    for (const auto& [code, text] : {std::pair(2, nameTaken),
                                     {3, shortPassword},
                                     {14, badEmail},
                                     {7, L"The server returned error code 7"},
                                     {1, L"The server returned error code 1"},
                                     {-1, L"The server returned error code -1"},
                                     {INT32_MIN, L"The server returned error code -2147483648"}}) {
        SCOPED_TRACE(code);
        AnswerCode(code);
        ExpectRefusal(text);
    }
}

TEST_F(AccountCreation, TakenEmailAddressClosesTheDialogAfterItsMessage) {
    AnswerCode(13);
    EXPECT_FALSE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Fill(dialog, anna);
        PressDone(dialog);
        const ScreenUser::Message message = user.TakeMessage(title);
        EXPECT_EQ(emailTaken, message.text);
        EXPECT_EQ(LoadIconW(nullptr, IDI_HAND), message.icon);
        EXPECT_EQ(dialog, message.owner);
        user.WaitUntil("the end of the dialog", [&] { return !IsWindow(dialog); });
    }));
    EXPECT_EQ(anna.userId, account.userId);
    EXPECT_EQ(anna.password, account.password);
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(AccountCreation, ServiceThatCannotBeReachedIsTold) {
    const ClosedPort closed;
    proxy.emplace(closed.Number());
    ExpectRefusal(notSent);
}

TEST_F(AccountCreation, ReplyWithoutACodeIsTold) {
    // Without one that is reset: whether its head comes before the reset is not known.
    for (const char* reply : {"", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n", "HTTP/1.1 200 OK\r\n\r\n",
                              "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n"}) {
        SCOPED_TRACE(reply);
        server.Answer(ConnectionScript{reply});
        ExpectRefusal(unreadable);
    }
}

TEST_F(AccountCreation, HalfACodeOfZerosIsNoSuccess) {
    server.Answer(std::string(2, '\0'));
    ExpectRefusal(L"The server returned error code -65536");
}

TEST_F(AccountCreation, SecondAttemptStartsFromWhatWasTyped) {
    AnswerCode(3);
    EXPECT_TRUE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        Fill(dialog, anna);
        PressDone(dialog);
        ExpectMessage(user, dialog, shortPassword, IDI_HAND);
        AnswerCode(0);
        PressDone(dialog);
    }));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ(requests[0].body, requests[1].body);
}
