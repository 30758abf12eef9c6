/* How the sign-in dialog looks, and signing in with it. */
#include "account/SignInScreen.h"
#include "ui/FormDialog.h"

TEST_F(SignInScreen, ShowsItsTextsFieldsAndMenu) {
    EXPECT_FALSE(Run([](DialogUser& user) {
        EXPECT_EQ(u"Sign in to Your Account", user.Caption());
        EXPECT_EQ((std::vector<std::u16string>{u"New Users:", u"Select Menu / New Account",
                                               u"If you already have an account:", u"User ID", u"Password"}),
                  user.Statics());
        EXPECT_EQ(u"Save password", user.Text(SAVE_PASSWORD_BOX));
        EXPECT_FALSE(user.Control(USER_ID_FIELD).isPassword);
        EXPECT_TRUE(user.Control(PASSWORD_FIELD).isPassword);
        const std::vector<ShownButton> buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Sign in", buttons[0].text);
        EXPECT_EQ(IDOK, buttons[0].command);
        EXPECT_EQ(u"Menu", buttons[1].text);
        const std::vector<ShownMenuItem>& menu = buttons[1].menu;
        ASSERT_EQ(3u, menu.size());
        EXPECT_EQ(u"New Account", menu[0].text);
        EXPECT_EQ(1016u, menu[0].command);
        EXPECT_EQ(u"Forgot", menu[1].text);
        EXPECT_EQ(1029u, menu[1].command);
        EXPECT_EQ(u"Cancel", menu[2].text);
        EXPECT_EQ(UINT{IDCANCEL}, menu[2].command);
        Leave(user);
    }));
}

TEST_F(SignInScreen, WithoutASavedUserIdStartsEmptyInTheUserIdField) {
    account.password = TEXT("ignored");
    Run([](DialogUser& user) {
        EXPECT_EQ(u"", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"", user.Text(PASSWORD_FIELD)) << "a password without a user ID is not shown";
        EXPECT_EQ(USER_ID_FIELD, user.Focus());
        Leave(user);
    });
}

TEST_F(SignInScreen, WithASavedUserIdStartsInThePasswordField) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    account.savePassword = true;
    Run([](DialogUser& user) {
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"*******", user.Text(PASSWORD_FIELD));
        EXPECT_EQ(PASSWORD_FIELD, user.Focus());
        EXPECT_FALSE(user.IsChecked(SAVE_PASSWORD_BOX)) << "it starts unticked every time";
        Leave(user);
    });
}

TEST_F(SignInScreen, SigningInSavesTheUserIdAndWithoutATickOnlyThat) {
    Accept();
    EXPECT_TRUE(Run([](DialogUser& user) {
        TypeCredentials(user);
        user.PressButton(u"Sign in");
    }));
    EXPECT_EQ(TEXT("Anna"), account.userId);
    EXPECT_EQ(TEXT("Secret-1"), account.password);
    EXPECT_FALSE(account.savePassword);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    EXPECT_EQ((std::vector<std::string>{"fclose(file 1) = 0", "EndDialog(dialog 1, 1) = TRUE"}),
              device.Calls({"fclose", "EndDialog"}))
        << "the settings are saved first";
    EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("Secret-1")).Int32(0x01020304).bytes,
              device.Requests().at(0).body);
}

TEST_F(SignInScreen, SigningInWithTheTickSavesThePasswordToo) {
    Accept();
    EXPECT_TRUE(Run([](DialogUser& user) {
        TypeCredentials(user);
        user.Check(SAVE_PASSWORD_BOX);
        user.PressButton(IDOK);
    }));
    EXPECT_TRUE(account.savePassword);
    EXPECT_EQ(0u, SettingsFile().find("Passwd="));
    EXPECT_NE(std::string::npos, SettingsFile().find("\r\nUserID=Anna\r\n"));
}

TEST_F(SignInScreen, SigningInWithoutTheTickRemovesAPasswordThatWasSaved) {
    device.PutFile(settingsFile, "Passwd=0102\nUserID=Anna\n");
    account.savePassword = true;
    Accept();
    EXPECT_TRUE(Run([](DialogUser& user) {
        TypeCredentials(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(SignInScreen, RefusalEmptiesTheAccountsPasswordKeepsTheFieldsAndStays) {
    Answer(MapShopReply().Int32(5));
    EXPECT_FALSE(Run([this](DialogUser& user) {
        TypeCredentials(user);
        user.Check(SAVE_PASSWORD_BOX);
        ExpectMessage();
        user.PressButton(IDOK);
        EXPECT_TRUE(user.IsOpen());
        EXPECT_EQ(user.Window(), device.MessageBoxes().back().owner);
        EXPECT_EQ(TEXT("Anna"), account.userId);
        EXPECT_EQ(TEXT(""), account.password);
        EXPECT_TRUE(account.savePassword);
        EXPECT_EQ(u"********", user.Text(PASSWORD_FIELD));
        Leave(user);
    }));
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(SignInScreen, EmptyPasswordIsToldAndNothingIsSent) {
    EXPECT_FALSE(Run([this](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        ExpectMessage();
        user.PressButton(IDOK);
        ExpectBox(u"You must provide a user name and password to access your account.", 64);
        EXPECT_EQ(user.Window(), device.MessageBoxes().back().owner);
        Leave(user);
    }));
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(SignInScreen, RetryAfterARefusalSignsIn) {
    Answer(MapShopReply().Int32(5));
    EXPECT_TRUE(Run([this](DialogUser& user) {
        TypeCredentials(user);
        ExpectMessage();
        user.PressButton(IDOK);
        Accept();
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(TEXT("Secret-1"), account.password) << "the field has kept it";
}

TEST_F(SignInScreen, IsAllInTheUsersLanguage) {
    Translate(
        "Sign in to Your Account\tA\nNew Users\tB\nSelect Menu / New Account\tC\nIf you already have an "
        "account\tD\n"
        "User ID\tE\nPassword\tF\nSave password\tG\nSign in\tH\nMenu\tI\nNew "
        "Account\tJ\nForgot\tK\nCancel\tL\n");
    Run([](DialogUser& user) {
        EXPECT_EQ(u"A", user.Caption());
        EXPECT_EQ((std::vector<std::u16string>{u"B", u"C", u"D", u"E", u"F"}), user.Statics());
        EXPECT_EQ(u"G", user.Text(SAVE_PASSWORD_BOX));
        EXPECT_EQ(u"H", user.MenuBar().at(0).text);
        EXPECT_EQ(u"I", user.MenuBar().at(1).text);
        EXPECT_EQ(u"K", user.MenuBar().at(1).menu.at(1).text);
        user.ChooseMenuItem(u"L");
    });
    // What the bar does not show is translated nowhere: the first item of its menu.
    EXPECT_EQ((std::set<WideString>{TEXT("Sign In")}), translationCatalogue.UntranslatedTexts());
}

TEST_F(SignInScreen, OddCredentialsAreTakenAsTyped) {
    for (const WideString& text : {WideString(1, u'x'), WideString(17, u'x'), WideString(500, u'x'),
                                   WideString(TEXT("\xC4\x00DF\x4E2D\xD83D\xDE00\""))}) {
        Accept();
        EXPECT_TRUE(Run([&](DialogUser& user) {
            user.Type(USER_ID_FIELD, text);
            user.Type(PASSWORD_FIELD, text);
            user.Check(SAVE_PASSWORD_BOX);
            user.PressButton(IDOK);
        }));
        EXPECT_EQ(text, account.userId);
        EXPECT_EQ(text, account.password);
    }
}

TEST_F(SignInScreen, ReadOnlySettingsFileDoesNotKeepFromSigningIn) {
    device.PutFile(settingsFile, "UserID=Old\r\n");
    device.SetReadOnly(settingsFile, true);
    Accept();
    EXPECT_TRUE(Run([](DialogUser& user) {
        TypeCredentials(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ("UserID=Old\r\n", SettingsFile());
}

TEST_F(SignInScreen, IsOwnedByTheWindowThatAsksForIt) {
    FormDialog application;
    device.UseDialog([this](DialogUser& user) {
        device.UseDialog(Leave);
        EXPECT_FALSE(RunSignInDialog(account, user.Window()));
        EXPECT_EQ(user.Window(), device.Dialogs().at(1).owner);
        Cancel(user);
    });
    application.DoModal(nullptr);
}

TEST_F(SignInScreen, ThatCannotBeShownIsNotSignedIn) {
    device.SetResources(device.LibraryInstance(), {});
    ExpectMessage();
    EXPECT_FALSE(RunSignInDialog(account, nullptr));
    EXPECT_EQ(u"Dialog 107 failed: err=0x716", device.MessageBoxes()[0].text);
}
