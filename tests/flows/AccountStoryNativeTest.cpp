/* One user's way with the account, from the first start on, between the library and the reference service's
 * own account program. */
#include "Platform.h"

#include "account/AccountTest.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "AccountHandler.h"
#include "MapCatalogue.h"
#include "Seed.h"
#include "account/AccountSettings.h"
#include "account/PackedPassword.h"
#include "account/SignInDialog.h"
#include "service/TemporaryFolder.h"

namespace {

class AccountStory : public AccountTest {
protected:
    void SetUp() override {
        AccountTest::SetUp();
        device.AddHost(host, 80, [this](const WebRequest& request) {
            EXPECT_EQ(u"cgi-bin/licapp.cgi", request.path);
            return WebReply::WithBody(HandleAccounts(accounts, request.body).body);
        });
    }

    /* A new start of the program: what it knows of the account is what was saved. */
    void StartAgain() {
        account = {};
        account.productName = TEXT("Navigator");
        LoadAccountSettings(account);
    }

    bool Run(const DialogScript& script) {
        device.UseDialog(script);
        return RunSignInDialog(account, nullptr);
    }

    /* What the user tries in the creation dialog, and what he is told. */
    void Refused(DialogUser& user, std::u16string_view text) {
        ExpectMessage();
        user.PressButton(u"Done");
        EXPECT_EQ(0u, device.MessageBoxes().back().text.find(text));
        EXPECT_EQ(UINT{MB_ICONHAND}, device.MessageBoxes().back().flags);
    }

    static void Fill(DialogUser& user, std::u16string_view userId, std::u16string_view password,
                     std::u16string_view email) {
        user.Type(USER_ID_FIELD, userId);
        user.Type(PASSWORD_FIELD, password);
        user.Type(RETYPE_FIELD, password);
        user.Type(NAME_FIELD, u"Anna Berg");
        user.Type(EMAIL_FIELD, email);
    }

    /* Creates an account without further ado. */
    void Create(std::u16string_view userId, std::u16string_view password, std::u16string_view email) {
        device.UseDialog([](DialogUser& user) { user.ChooseMenuItem(u"New Account"); });
        device.UseDialog([&](DialogUser& user) {
            Fill(user, userId, password, email);
            user.PressButton(u"Done");
        });
        EXPECT_TRUE(RunSignInDialog(account, nullptr));
    }

    /* Whether a file of the device or of the service holds the text, as bytes or as UTF-16. */
    bool IsInAFile(const std::string& text) {
        std::string wide;
        for (const char unit : text)
            wide += {unit, '\0'};
        for (const std::filesystem::path& root :
             {folder.Path(), std::filesystem::path(device.HostPath(u"\\"))}) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
                if (!entry.is_regular_file()) continue;
                std::stringstream bytes;
                bytes << std::ifstream(entry.path(), std::ios::binary).rdbuf();
                if (bytes.str().find(text) != std::string::npos ||
                    bytes.str().find(wide) != std::string::npos)
                    return true;
            }
        }
        return false;
    }

    TemporaryFolder folder;
    MapCatalogue catalogue{folder.Path(), RegionsOfTheWorld()};
    AccountStore accounts{folder.Path() / MapCatalogue::fileName};
};

}  // namespace

TEST_F(AccountStory, CreationGoesThroughEveryRefusalAndSignsIn) {
    Create(u"Taken", u"secret1", u"taken@example.org");
    account = {};
    device.UseDialog([](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Taken");
        user.ChooseMenuItem(u"New Account");
        EXPECT_FALSE(user.IsOpen());
    });
    device.UseDialog([this](DialogUser& user) {
        EXPECT_EQ(u"Taken", user.Text(USER_ID_FIELD));
        Fill(user, u"TAKEN", u"abc12", u"anna");
        user.Type(RETYPE_FIELD, u"ABC12");
        Refused(user, u"The passwords do not match");
        EXPECT_EQ(u"", user.Text(RETYPE_FIELD));
        user.Type(RETYPE_FIELD, u"abc12");
        Refused(user, u"The password must be at least 6 letters or numbers");
        user.Type(PASSWORD_FIELD, u"abc123");
        user.Type(RETYPE_FIELD, u"abc123");
        Refused(user, u"You must provide a valid email address.");
        user.Type(EMAIL_FIELD, u"anna@example.org");
        Refused(user, u"This user name is already in use.\nIf this is your account");
        user.Type(USER_ID_FIELD, u"Anna");
        user.PressButton(u"Done");
    });
    EXPECT_TRUE(RunSignInDialog(account, nullptr));
    EXPECT_EQ(TEXT("Anna"), account.userId);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    EXPECT_FALSE(IsInAFile("abc123"));
}

TEST_F(AccountStory, TakenEmailLeadsBackToTheSignInDialogAsItWas) {
    Create(u"Anna", u"secret1", u"anna@example.org");
    StartAgain();
    device.UseDialog([this](DialogUser& user) {
        user.Type(PASSWORD_FIELD, u"typed before");
        ExpectMessage();
        user.ChooseMenuItem(u"New Account");
        EXPECT_EQ(0u,
                  device.MessageBoxes().back().text.find(u"An account already exists with the same email"));
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        EXPECT_EQ(std::u16string(12, u'*'), user.Text(PASSWORD_FIELD));
        EXPECT_EQ(TEXT("Berta"), account.userId) << "what was tried stays with the account";
        EXPECT_EQ(TEXT("secret2"), account.password);
        user.Type(PASSWORD_FIELD, u"Secret1");
        user.PressButton(u"Sign in");
    });
    device.UseDialog([](DialogUser& user) {
        Fill(user, u"Berta", u"secret2", u"ANNA@example.org");
        user.PressButton(u"Done");
    });
    EXPECT_TRUE(RunSignInDialog(account, nullptr));
    EXPECT_EQ(TEXT("Anna"), account.userId);
}

TEST_F(AccountStory, SavedNameStartsInThePasswordFieldAndAWrongPasswordIsTold) {
    Create(u"Anna", u"secret1", u"anna@example.org");
    StartAgain();
    EXPECT_FALSE(Run([this](DialogUser& user) {
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"", user.Text(PASSWORD_FIELD));
        EXPECT_EQ(PASSWORD_FIELD, user.Focus());
        user.Type(PASSWORD_FIELD, u"secret2");
        ExpectMessage();
        user.PressButton(u"Sign in");
        ExpectBox(
            u"The Password is not correct. If you have lost your password, click the \"I Forgot\" button.",
            0);
        user.Type(USER_ID_FIELD, u"Nobody");
        ExpectMessage();
        user.PressButton(u"Sign in");
        ExpectBox(
            u"The User ID is not correct. If you have lost your ID, click the \"I Forgot\" button. Do not "
            u"create more than one account.",
            0);
        user.ChooseMenuItem(u"Forgot");
        EXPECT_EQ(u"http://www.orvande.example/forgot.htm", device.StartedPrograms().back().file);
        user.ChooseMenuItem(u"Cancel");
    }));
}

TEST_F(AccountStory, SavedPasswordSignsInThoughItHasLostCasePunctuationAndItsEnd) {
    Create(u"Anna", u"My Pass-Word 2026, really", u"anna@example.org");
    EXPECT_TRUE(Run([](DialogUser& user) {
        user.Check(SAVE_PASSWORD_BOX);
        user.PressButton(u"Sign in");
    }));
    EXPECT_NE(std::string::npos, SettingsFile().find("Passwd="));
    EXPECT_FALSE(IsInAFile("mypassword2026re"));
    EXPECT_FALSE(IsInAFile("My Pass-Word"));

    StartAgain();
    EXPECT_EQ(TEXT("mypassword2026re"), account.password);
    EXPECT_TRUE(Run([](DialogUser& user) {
        EXPECT_EQ(std::u16string(16, u'*'), user.Text(PASSWORD_FIELD));
        user.PressButton(u"Sign in");
    }));
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile()) << "without the tick the password is not kept";
}

TEST_F(AccountStory, NothingThatTheUserTypesIsOfferedToTranslators) {
    Create(u"Anna", u"secret1", u"anna@example.org");
    EXPECT_TRUE(Run([](DialogUser& user) {
        user.Check(SAVE_PASSWORD_BOX);
        user.PressButton(u"Sign in");
    }));
    StartAgain();
    Run([](DialogUser& user) { user.ChooseMenuItem(u"Cancel"); });
    for (const WideString& text : translationCatalogue.UntranslatedTexts()) {
        EXPECT_EQ(WideString::npos, text.find(TEXT("secret1")));
        EXPECT_EQ(WideString::npos, text.find(TEXT("Anna")));
    }
}
