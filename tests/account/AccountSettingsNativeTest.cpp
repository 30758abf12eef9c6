#include "account/AccountSettings.h"

#include "account/AccountTest.h"
#include "account/PackedPassword.h"

namespace {

class AccountSettings : public AccountTest {
protected:
    void Load(std::string_view file) {
        device.PutFile(settingsFile, file);
        LoadAccountSettings(account);
    }

    static std::string Hex(WideStringView password) {
        std::string digits;
        for (const uint8_t byte : PackPassword(password)) {
            char pair[3];
            snprintf(pair, sizeof(pair), "%02x", byte);
            digits += pair;
        }
        return digits;
    }
};

}  // namespace

TEST_F(AccountSettings, WithoutTheSavedPasswordHoldOnlyTheUserId) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountSettings, HoldThePasswordScrambledAs32LowerCaseDigits) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    account.savePassword = true;
    SaveAccountSettings(account);
    const std::string digits = Hex(TEXT("secret1"));
    EXPECT_EQ(32u, digits.size());
    EXPECT_EQ("Passwd=" + digits + "\r\nUserID=Anna\r\n", SettingsFile());
    EXPECT_EQ(std::string::npos, SettingsFile().find("secret"));
}

TEST_F(AccountSettings, AreRebuiltSoThatAnEarlierPasswordAndForeignKeysGo) {
    device.PutFile(settingsFile, "Passwd=00\nOther=1\nUserID=Old\n");
    account.userId = TEXT("Anna");
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountSettings, MakeTheirFolder) {
    EXPECT_FALSE(device.Exists(u"\\Application Data\\Orvande"));
    account.userId = TEXT("Anna");
    SaveAccountSettings(account);
    EXPECT_TRUE(device.Exists(u"\\Application Data\\Orvande"));
}

TEST_F(AccountSettings, GiveBackUserIdAndPasswordInItsLossyForm) {
    account.userId = TEXT("Anna \xC4=&#1");
    account.password = TEXT("Se-CRET1");
    account.savePassword = true;
    SaveAccountSettings(account);
    Account restored;
    restored.password = TEXT("other");
    LoadAccountSettings(restored);
    EXPECT_EQ(account.userId, restored.userId);
    EXPECT_EQ(TEXT("secret1"), restored.password);
    EXPECT_FALSE(restored.savePassword);
}

TEST_F(AccountSettings, WithoutAPasswordLeaveTheAccountsOwn) {
    account.password = TEXT("own");
    Load("UserID=Anna\n");
    EXPECT_EQ(TEXT("Anna"), account.userId);
    EXPECT_EQ(TEXT("own"), account.password);
    Load("UserID=Anna\nPasswd=\n");
    EXPECT_EQ(TEXT("own"), account.password);
}

TEST_F(AccountSettings, ThatAreNotThereGiveAnEmptyUserIdAndNoPassword) {
    account.userId = TEXT("before");
    LoadAccountSettings(account);
    EXPECT_EQ(TEXT(""), account.userId);
    EXPECT_EQ(TEXT(""), account.password);
}

TEST_F(AccountSettings, ShortPasswordIsUnpackedAsFarAsItGoes) {
    Load("UserID=Anna\nPasswd=" + Hex(TEXT("secret1")).substr(0, 6) + "\n");
    EXPECT_EQ(TEXT("sec"), account.password);
}

TEST_F(AccountSettings, OddLastDigitOfThePasswordIsIgnored) {
    Load("UserID=Anna\nPasswd=" + Hex(TEXT("secret1")).substr(0, 7) + "\n");
    EXPECT_EQ(TEXT("sec"), account.password);
}

TEST_F(AccountSettings, OneDigitIsAPasswordOfNothing) {
    account.password = TEXT("own");
    Load("UserID=Anna\nPasswd=5\n");
    EXPECT_EQ(TEXT(""), account.password);
}

TEST_F(AccountSettings, PasswordThatIsTooLongIsCutTo16Bytes) {
    Load("UserID=Anna\nPasswd=" + Hex(TEXT("abcdefghijklmnop")) + "0102030405\n");
    EXPECT_EQ(TEXT("abcdefghijklmnop"), account.password);
}

TEST_F(AccountSettings, PasswordThatIsNoHexadecimalIsReadAsZeros) {
    Load("UserID=Anna\nPasswd=zzzz\n");
    EXPECT_EQ(TEXT(""), account.password)
        << "neither of the key's first two bytes stands for a letter or digit";
}

TEST_F(AccountSettings, ReadOnlyFileKeepsItsContents) {
    device.PutFile(settingsFile, "UserID=Old\r\n");
    device.SetReadOnly(settingsFile, true);
    account.userId = TEXT("Anna");
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=Old\r\n", SettingsFile());
}

TEST_F(AccountSettings, WithoutAFolderForApplicationDataAreNeitherSavedNorLoaded) {
    device.PutFile(u"\\settings.ini", "UserID=Stranger\n");
    device.SetSpecialFolder(CSIDL_APPDATA, std::nullopt);
    account.userId = TEXT("Anna");
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=Stranger\n", device.TakeFile(u"\\settings.ini"));
    LoadAccountSettings(account);
    EXPECT_EQ(TEXT(""), account.userId);
}

TEST_F(AccountSettings, FullStorageIsNoError) {
    device.SetFreeStorage(3);
    account.userId = TEXT("Anna");
    SaveAccountSettings(account);
    device.SetFreeStorage(std::nullopt);
    EXPECT_EQ("Use", SettingsFile()) << "what still fits is written";
    EXPECT_EQ(0u, device.CountCalls("MessageBoxW"));
    EXPECT_EQ(TEXT("Anna"), account.userId);
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile()) << "with room again all is saved";
}

TEST_F(AccountSettings, UserIdOf500UnitsWithLineFeedsAndQuotesSurvives) {
    account.userId = WideString(498, u'x') + TEXT("\n\"");
    SaveAccountSettings(account);
    Account restored;
    LoadAccountSettings(restored);
    EXPECT_EQ(account.userId, restored.userId);
}

TEST_F(AccountSettings, UnitsAboveALatinByteLoseTheirHighByte) {
    account.userId = TEXT("\x4E16\x20AC");
    SaveAccountSettings(account);
    EXPECT_EQ("UserID=%16%ac\r\n", SettingsFile());
}
