/* The dialog for a new account, what it sends, and what it keeps. */
#include "account/CreateAccountScreen.h"

TEST_F(CreateAccountScreen, ShowsItsTextsFieldsAndMenuBar) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    EXPECT_FALSE(Run([](DialogUser& user) {
        EXPECT_EQ(u"Create Account", user.Caption());
        EXPECT_EQ((std::vector<std::u16string>{u"User ID", u"Password", u"Retype", u"Your name", u"Email"}),
                  user.Statics());
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"*******", user.Text(PASSWORD_FIELD));
        EXPECT_EQ(u"", user.Text(RETYPE_FIELD));
        EXPECT_TRUE(user.Control(RETYPE_FIELD).isPassword);
        EXPECT_EQ(u"", user.Text(NAME_FIELD));
        EXPECT_EQ(u"", user.Text(EMAIL_FIELD));
        EXPECT_EQ(u"Email product update info", user.Text(WANTS_UPDATES_BOX));
        EXPECT_TRUE(user.IsChecked(WANTS_UPDATES_BOX));
        EXPECT_EQ(u"Done", user.MenuBar().at(0).text);
        EXPECT_EQ(u"Cancel", user.MenuBar().at(1).text);
        user.PressButton(IDCANCEL);
    }));
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(CreateAccountScreen, StartsWithItsFieldsFilledInAndTheFocusInTheFirst) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    Run([this](DialogUser& user) {
        const std::vector<std::string> expected = {
            R"(SetWindowTextW(control 1001 of dialog 1, "Anna") = TRUE)",
            R"(SetWindowTextW(control 1003 of dialog 1, "secret1") = TRUE)",
            R"(SetWindowTextW(control 1006 of dialog 1, "") = TRUE)",
            R"(SetWindowTextW(control 1010 of dialog 1, "") = TRUE)"};
        EXPECT_EQ(expected, device.Calls({"SetWindowTextW"}));
        EXPECT_EQ(USER_ID_FIELD, user.Focus());
        user.PressButton(IDCANCEL);
    });
}

TEST_F(CreateAccountScreen, CheckBoxIsNoTabStop) {
    Run([](DialogUser& user) {
        user.Type(EMAIL_FIELD, u"a");
        user.PressTab();
        EXPECT_EQ(USER_ID_FIELD, user.Focus());
        user.PressButton(IDCANCEL);
    });
}

TEST_F(CreateAccountScreen, PostsItsRequestSavesAndEndsWithOk) {
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(u"Done");
    }));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& request = device.Requests()[0];
    EXPECT_EQ(u"POST", request.verb);
    EXPECT_EQ(u"cgi-bin/licapp.cgi", request.path);
    EXPECT_EQ(host, request.host);
    EXPECT_EQ(80, request.port);
    EXPECT_EQ(Request(1, 0, TEXT("English")).bytes, request.body);
    EXPECT_EQ(TEXT("Anna"), account.userId);
    EXPECT_EQ(TEXT("secret1"), account.password);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    EXPECT_TRUE(device.MessageBoxes().empty());
    EXPECT_EQ(1u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    const std::vector<std::string> calls = device.Calls({"fclose", "EndDialog"});
    EXPECT_EQ((std::vector<std::string>{"fclose(file 1) = 0", "EndDialog(dialog 1, 1) = TRUE"}), calls);
}

TEST_F(CreateAccountScreen, KeepsThePasswordIfTheLastSignInSaidSo) {
    account.savePassword = true;
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(0u, SettingsFile().find("Passwd="));
}

TEST_F(CreateAccountScreen, UntickedUpdatesAreTheByteZero) {
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.Check(WANTS_UPDATES_BOX, false);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(Request(0, 0, TEXT("English")).bytes, device.Requests().at(0).body);
}

TEST_F(CreateAccountScreen, ShownAgainHasTheBoxAsTheUserLeftIt) {
    Answer(WebReply::WithBody(MapShopReply().Int32(0).bytes));
    CreateAccountDialog dialog(account);
    device.UseDialog([](DialogUser& user) {
        EXPECT_TRUE(user.IsChecked(WANTS_UPDATES_BOX));
        Fill(user);
        user.Check(WANTS_UPDATES_BOX, false);
        user.PressButton(IDOK);
    });
    EXPECT_EQ(IDOK, dialog.DoModal(nullptr));
    device.UseDialog([](DialogUser& user) {
        EXPECT_FALSE(user.IsChecked(WANTS_UPDATES_BOX));
        user.PressButton(IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(CreateAccountScreen, SendsTheProductsVendorAndTheUsersLanguage) {
    SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Navigator"), TEXT("web_vendor"), REG_DWORD,
                     "\x04\x03\x02\x81");
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(WideString(TEXT("French")) + WCHAR{0}));
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(Request(1, static_cast<int32_t>(0x81020304), TEXT("French")).bytes,
              device.Requests().at(0).body);
}

TEST_F(CreateAccountScreen, PasswordsThatDifferOnlyInCaseDoNotMatch) {
    account.userId = TEXT("before");
    EXPECT_FALSE(Run([this](DialogUser& user) {
        Fill(user);
        user.Type(PASSWORD_FIELD, u"abc123");
        user.Type(RETYPE_FIELD, u"ABC123");
        ExpectMessage();
        user.PressButton(IDOK);
        ExpectBox(u"The passwords do not match", 16);
        EXPECT_EQ(user.Window(), device.MessageBoxes().back().owner);
        EXPECT_TRUE(user.IsOpen());
        EXPECT_EQ(u"", user.Text(RETYPE_FIELD));
        EXPECT_EQ(u"******", user.Text(PASSWORD_FIELD));
        user.PressButton(IDCANCEL);
    }));
    EXPECT_TRUE(device.Requests().empty());
    EXPECT_EQ(0u, device.CountCalls("RegOpenKeyExW"));
    EXPECT_EQ(TEXT("before"), account.userId) << "nothing is taken over";
}

TEST_F(CreateAccountScreen, SecondPasswordStaysUntilTheBoxAboutItIsClosed) {
    Run([this](DialogUser& user) {
        user.Type(RETYPE_FIELD, u"secret1");
        ExpectMessage();
        device.ForgetCalls();
        user.PressButton(IDOK);
        const std::vector<std::string> expected = {
            R"(MessageBoxW(dialog 1, "The passwords do not match", "Title", 0x00000010) = 1)",
            R"(SetWindowTextW(control 1005 of dialog 1, "") = TRUE)"};
        EXPECT_EQ(expected, device.Calls({"MessageBoxW", "SetWindowTextW"}));
        user.PressButton(IDCANCEL);
    });
}

TEST_F(CreateAccountScreen, SettingsAreReadOnceThePasswordsMatchAndTheFieldsAfterThem) {
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([this](DialogUser& user) {
        Fill(user);
        device.ForgetCalls();
        user.PressButton(IDOK);
    }));
    std::string order;
    for (const std::string& call : device.Calls({"RegOpenKeyExW", "GetDlgItemTextW", "InternetOpenW"}))
        order += call[0];
    EXPECT_EQ("GGRRGGGGI", order);
}

TEST_F(CreateAccountScreen, EmptyFieldsAreSentForTheServiceToJudge) {
    Answer(MapShopReply().Int32(3));
    EXPECT_FALSE(Run([this](DialogUser& user) {
        ExpectMessage();
        user.PressButton(IDOK);
        user.PressButton(IDCANCEL);
    }));
    MapShopReply request;
    request.Int32(10).Text({}).Text({}).Text({}).Text({}).Text({});
    request.bytes += '\x01';
    request.Int32(0).Text(TEXT("English"));
    EXPECT_EQ(request.bytes, device.Requests().at(0).body);
}

TEST_F(CreateAccountScreen, WithoutALanguageSettingTheRequestEndsWithEnglish) {
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(IDOK);
    }));
    const std::string end = MapShopReply().Text(TEXT("English")).bytes;
    const std::string& body = device.Requests().at(0).body;
    EXPECT_EQ(end, body.substr(body.size() - end.size()));
}

TEST_F(CreateAccountScreen, EmptyLanguageSettingIsSentAsItIs) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(WideString(1, WCHAR{0})));
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(Request(1, 0, {}).bytes, device.Requests().at(0).body);
}

TEST_F(CreateAccountScreen, ReadOnlySettingsFileDoesNotKeepFromCreating) {
    device.PutFile(settingsFile, "UserID=Old\r\n");
    device.SetReadOnly(settingsFile, true);
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) {
        Fill(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ("UserID=Old\r\n", SettingsFile());
}

TEST_F(CreateAccountScreen, WhatIsPressedWhileAMessageIsShownCountsForNothing) {
    EXPECT_FALSE(Run([this](DialogUser& user) {
        EnableWindow(user.Window(), FALSE);
        SendMessageW(user.Window(), WM_COMMAND, IDOK, 0);
        SendMessageW(user.Window(), WM_COMMAND, IDCANCEL, 0);
        EnableWindow(user.Window(), TRUE);
        EXPECT_TRUE(user.IsOpen());
        EXPECT_TRUE(device.Requests().empty());
        user.PressButton(IDCANCEL);
    }));
}

TEST_F(CreateAccountScreen, LongTextsGoInALargeRequestWhoseReplyIsReadAllTheSame) {
    const std::u16string longText(500, u'\x4E2D');
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([&](DialogUser& user) {
        for (const int field : {USER_ID_FIELD, PASSWORD_FIELD, RETYPE_FIELD, NAME_FIELD, EMAIL_FIELD})
            user.Type(field, longText);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(longText, account.userId);
}
