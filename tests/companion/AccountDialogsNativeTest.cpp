/* The dialogs behind the companion's exports. */
#include "companion/CompanionTest.h"

namespace {

class AccountDialogs : public CompanionTest {
protected:
    LMInt32 SignIn(const DialogScript& script) {
        device.UseDialog(script);
        return LMAccountShowSignIn(&record, nullptr);
    }

    LMInt32 Create(const DialogScript& script) {
        device.UseDialog(script);
        return LMAccountShowCreate(&record, nullptr);
    }

    static void TypeCredentials(DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        user.Type(PASSWORD_FIELD, u"Secret-1");
    }

    static void Fill(DialogUser& user) {
        TypeCredentials(user);
        user.Type(RETYPE_FIELD, u"Secret-1");
        user.Type(EMAIL_FIELD, u"anna@example.org");
    }

    static void Leave(DialogUser& user) { user.ChooseMenuItem(IDCANCEL); }

    /* The user presses OK in the message that comes of it. */
    void ExpectMessage(const std::function<void()>& action, std::u16string_view beginning) {
        device.AnswerMessageBox(IDOK);
        action();
        ASSERT_FALSE(device.MessageBoxes().empty());
        EXPECT_EQ(0u, device.MessageBoxes().back().text.find(beginning));
        EXPECT_EQ(u"Orvande Online", device.MessageBoxes().back().caption);
    }

    LMAccountRecord record = Record();
};

}  // namespace

TEST_F(AccountDialogs, SigningInFillsTheRecordAndSaves) {
    record = Record(TEXT("somebody with a name"), TEXT("something longer"));
    Accept();
    ExpectSuccess(SignIn([](DialogUser& user) {
        EXPECT_EQ(u"Sign in to Your Account", user.Caption());
        EXPECT_EQ(u"somebody with a name", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"****************", user.Text(PASSWORD_FIELD));
        TypeCredentials(user);
        user.Check(SAVE_PASSWORD_BOX);
        user.PressButton(u"Sign in");
    }));
    LMAccountRecord expected = Record(TEXT("Anna"), TEXT("Secret-1"));
    expected.savePassword = 1;
    EXPECT_EQ(Bytes(expected), Bytes(record));
    EXPECT_EQ(0u, SettingsFile().find("Passwd="));
    EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("Secret-1")).Int32(0x01020304).bytes,
              device.Requests().at(0).body);
}

TEST_F(AccountDialogs, SigningInWithoutTheTickSavesNoPassword) {
    record.savePassword = 1;
    Accept();
    ExpectSuccess(SignIn([](DialogUser& user) {
        EXPECT_FALSE(user.IsChecked(SAVE_PASSWORD_BOX));
        TypeCredentials(user);
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(0, record.savePassword);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountDialogs, CancelLeavesTheRecordAsItWas) {
    record = Record(TEXT("Anna"), TEXT("secret1"));
    record.savePassword = -1;
    record.userId[200] = u'x';
    const std::string before = Bytes(record);
    ExpectFailure(cancelled, SignIn([](DialogUser& user) {
                      user.Type(USER_ID_FIELD, u"nobody");
                      Leave(user);
                  }));
    EXPECT_EQ(before, Bytes(record));
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(AccountDialogs, RecordHoldsWhatWasTriedLastWithoutThePassword) {
    record = Record(TEXT("somebody"), TEXT("something"));
    Answer(MapShopReply().Int32(5));
    ExpectFailure(cancelled, SignIn([this](DialogUser& user) {
                      TypeCredentials(user);
                      ExpectMessage([&] { user.PressButton(IDOK); }, u"The Password is not correct.");
                      Leave(user);
                  }));
    EXPECT_EQ(Bytes(Record(TEXT("Anna"))), Bytes(record));
}

TEST_F(AccountDialogs, AccountThatCannotBeSavedIsSignedInAllTheSameAndTold) {
    device.PutFile(settingsFile, "UserID=Old\r\n");
    device.SetReadOnly(settingsFile, true);
    Accept();
    Expect(1, ERROR_ACCESS_DENIED, SignIn([](DialogUser& user) {
               TypeCredentials(user);
               user.PressButton(IDOK);
           }));
    EXPECT_EQ(Bytes(Record(TEXT("Anna"), TEXT("Secret-1"))), Bytes(record));
    Expect(1, ERROR_ACCESS_DENIED, Create([](DialogUser& user) {
               Fill(user);
               user.PressButton(u"Done");
           }));
}

TEST_F(AccountDialogs, FieldsTakeWhatTheRecordTakes) {
    const WideString longest(255, u'x');
    Accept();
    ExpectSuccess(SignIn([&](DialogUser& user) {
        user.Type(USER_ID_FIELD, longest + u"y");
        user.Type(PASSWORD_FIELD, longest + u"y");
        user.PressButton(IDOK);
    }));
    EXPECT_EQ(Bytes(Record(longest, longest)), Bytes(record));
    record = Record();
    ExpectSuccess(Create([&](DialogUser& user) {
        for (const int field : {USER_ID_FIELD, PASSWORD_FIELD, RETYPE_FIELD})
            user.Type(field, longest + u"y");
        user.PressButton(u"Done");
    }));
    EXPECT_EQ(Bytes(Record(longest, longest)), Bytes(record));
}

TEST_F(AccountDialogs, TextThatAnotherProgramPutsIntoAFieldIsNotCut) {
    const WideString tooLong(256, u'x');
    Accept();
    ExpectFailure(ERROR_MORE_DATA, SignIn([&](DialogUser& user) {
                      TypeCredentials(user);
                      user.SendTo(USER_ID_FIELD, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(tooLong.c_str()));
                      user.PressButton(IDOK);
                  }));
    EXPECT_EQ(Bytes(Record()), Bytes(record));
}

TEST_F(AccountDialogs, AccountCreatedOnTheWayCountsAsSignedIn) {
    Answer(MapShopReply().Int32(0));
    device.UseDialog([](DialogUser& user) {
        TypeCredentials(user);
        user.ChooseMenuItem(u"New Account");
    });
    ExpectSuccess(SignIn([](DialogUser& user) {
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        Fill(user);
        user.PressButton(u"Done");
    }));
    EXPECT_EQ(2u, device.Dialogs().size());
    EXPECT_EQ(Bytes(Record(TEXT("Anna"), TEXT("Secret-1"))), Bytes(record));
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountDialogs, CreationFillsTheRecordAndSaves) {
    SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Navigator"), TEXT("web_vendor"), REG_DWORD,
                     std::string("\x07\0\0\0", 4));
    record.savePassword = 1;
    Answer(MapShopReply().Int32(0));
    ExpectSuccess(Create([](DialogUser& user) {
        EXPECT_EQ(u"Create Account", user.Caption());
        Fill(user);
        user.PressButton(u"Done");
    }));
    LMAccountRecord expected = Record(TEXT("Anna"), TEXT("Secret-1"));
    expected.savePassword = 1;
    EXPECT_EQ(Bytes(expected), Bytes(record));
    EXPECT_EQ(0u, SettingsFile().find("Passwd="));
    MapShopReply request;
    request.Int32(10).Text(TEXT("Anna")).Text(TEXT("Secret-1")).Text(TEXT("")).Text(TEXT(""));
    request.Text(TEXT("anna@example.org")).bytes += '\1';
    EXPECT_EQ(request.Int32(7).Text(TEXT("English")).bytes, device.Requests().at(0).body);
}

TEST_F(AccountDialogs, CreationThatIsGivenUpTellsWhatWasTried) {
    Answer(MapShopReply().Int32(13));
    ExpectFailure(cancelled, Create([this](DialogUser& user) {
                      Fill(user);
                      ExpectMessage([&] { user.PressButton(u"Done"); }, u"An account already exists");
                      EXPECT_FALSE(user.IsOpen());
                  }));
    EXPECT_EQ(Bytes(Record(TEXT("Anna"), TEXT("Secret-1"))), Bytes(record));
    ExpectFailure(cancelled, Create([](DialogUser& user) { user.PressButton(u"Cancel"); }));
    EXPECT_EQ("no file", SettingsFile());
}

TEST_F(AccountDialogs, OwnerIsTheApplicationsWindow) {
    device.UseDialog([this](DialogUser& user) {
        LMAccountRecord other = Record();
        device.UseDialog([](DialogUser& inner) { inner.PressButton(u"Cancel"); });
        EXPECT_EQ(0, LMAccountShowCreate(&other, user.Window()));
        EXPECT_EQ(user.Window(), device.Dialogs().at(1).owner);
        Leave(user);
    });
    EXPECT_EQ(0, LMAccountShowSignIn(&record, nullptr));
    EXPECT_EQ(nullptr, device.Dialogs().at(0).owner);
}

TEST_F(AccountDialogs, ThatCannotBeShownIsTold) {
    device.SetResources(device.LibraryInstance(), {});
    device.AnswerMessageBox(IDOK);
    ExpectFailure(ERROR_RESOURCE_NAME_NOT_FOUND, LMAccountShowSignIn(&record, nullptr));
    EXPECT_EQ(u"Dialog 107 failed: err=0x716", device.MessageBoxes().at(0).text);
    device.AnswerMessageBox(IDOK);
    ExpectFailure(ERROR_RESOURCE_NAME_NOT_FOUND, LMAccountShowCreate(&record, nullptr));
    EXPECT_EQ(Bytes(Record()), Bytes(record));
}

TEST_F(AccountDialogs, SpeakTheUsersLanguageFromTheFileNamedAfterTheDll) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("German")));
    device.PutFile(u"\\Program Files\\App\\OrvandeAccount.German.txt",
                   "Sign in to Your Account\tAnmelden\nPassword\tKennwort\nCancel\tAbbrechen\n");
    Restart();
    ExpectFailure(cancelled, SignIn([](DialogUser& user) {
                      EXPECT_EQ(u"Anmelden", user.Caption());
                      const std::vector<std::u16string> texts = user.Statics();
                      EXPECT_NE(texts.end(), std::find(texts.begin(), texts.end(), u"Kennwort"));
                      user.ChooseMenuItem(u"Abbrechen");
                  }));
}
