/* The account's settings, through the companion's record. */
#include "companion/CompanionTest.h"

namespace {

// The codes 29, 15, 13, 28, 15, 30 and 2 and nine zeros, with the key.
constexpr char savedSecret[] = "Passwd=46cb138b39f66f02af73d9488c21f5ba\r\n";

class AccountSaving : public CompanionTest {
protected:
    /* Loading fails, and leaves the record alone. */
    void ExpectNotLoaded(DWORD error) {
        const LMAccountRecord before = Record(TEXT("before"), TEXT("before"));
        LMAccountRecord record = before;
        ExpectFailure(error, LMAccountLoad(&record));
        EXPECT_EQ(Bytes(before), Bytes(record));
    }
};

}  // namespace

TEST_F(AccountSaving, KeepsTheUserIdAndOnRequestThePassword) {
    LMAccountRecord record = Record(TEXT("Anna"), TEXT("Secret-1"));
    const std::string before = Bytes(record);
    ExpectSuccess(LMAccountSave(&record));
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
    EXPECT_EQ(before, Bytes(record));
    record.savePassword = 1;
    ExpectSuccess(LMAccountSave(&record));
    EXPECT_EQ(savedSecret + std::string("UserID=Anna\r\n"), SettingsFile());
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(AccountSaving, WhatWasSavedIsLoadedInWholeFields) {
    device.PutFile(settingsFile, savedSecret + std::string("UserID=Anna\r\n"));
    LMAccountRecord record = Record(TEXT("somebody else"), TEXT("something longer"));
    ExpectSuccess(LMAccountLoad(&record));
    LMAccountRecord expected = Record(TEXT("Anna"), TEXT("secret1"));
    expected.savePassword = 1;
    EXPECT_EQ(Bytes(expected), Bytes(record)) << "nothing of the earlier texts is left";
}

TEST_F(AccountSaving, WithoutASavedPasswordLoadsNoneAndSaysSo) {
    device.PutFile(settingsFile, "UserID=Anna\r\n");
    LMAccountRecord record = Record(TEXT("before"), TEXT("before"));
    record.savePassword = 1;
    ExpectSuccess(LMAccountLoad(&record));
    EXPECT_EQ(Bytes(Record(TEXT("Anna"))), Bytes(record));
}

TEST_F(AccountSaving, LoadedAndSavedAgainIsTheSameFile) {
    LMAccountRecord record = Record(TEXT("Anna \xC4=&"), TEXT("secret1"));
    record.savePassword = 1;
    ExpectSuccess(LMAccountSave(&record));
    const std::string before = SettingsFile();
    LMAccountRecord loaded = Record();
    ExpectSuccess(LMAccountLoad(&loaded));
    EXPECT_EQ(Bytes(record), Bytes(loaded));
    ExpectSuccess(LMAccountSave(&loaded));
    EXPECT_EQ(before, SettingsFile());
}

TEST_F(AccountSaving, BeforeTheFirstTimeNothingIsLoaded) {
    ExpectNotLoaded(ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(device.Exists(u"\\Application Data\\Orvande"));
}

TEST_F(AccountSaving, FileThatCannotBeOpenedIsTold) {
    device.PutFile(settingsFile, "UserID=Anna\r\n");
    device.FailCall("_wfopen", 1, ERROR_SHARING_VIOLATION);
    ExpectNotLoaded(ERROR_SHARING_VIOLATION);
}

TEST_F(AccountSaving, UserIdThatDoesNotFitIsNotCut) {
    device.PutFile(settingsFile, "UserID=" + std::string(256, 'x') + "\r\n");
    ExpectNotLoaded(ERROR_MORE_DATA);
    device.PutFile(settingsFile, "UserID=" + std::string(255, 'x') + "\r\n");
    LMAccountRecord record = Record();
    ExpectSuccess(LMAccountLoad(&record));
    EXPECT_EQ(Bytes(Record(WideString(255, u'x'))), Bytes(record));
}

TEST_F(AccountSaving, UserIdEndsAtANulInIt) {
    device.PutFile(settingsFile, "UserID=An%00na\r\n");
    LMAccountRecord record = Record(TEXT("before"));
    ExpectSuccess(LMAccountLoad(&record));
    EXPECT_EQ(Bytes(Record(TEXT("An"))), Bytes(record)) << "what follows the NUL is zero";
}

TEST_F(AccountSaving, PasswordWithoutLettersAndDigitsLoadsAsNone) {
    for (const WideStringView password : {TEXT(""), TEXT("!?")}) {
        LMAccountRecord record = Record(TEXT("Anna"), password);
        record.savePassword = 1;
        ExpectSuccess(LMAccountSave(&record));
        EXPECT_EQ("Passwd=5bc41e9736e86d02af73d9488c21f5ba\r\nUserID=Anna\r\n", SettingsFile());
        ExpectSuccess(LMAccountLoad(&record));
        EXPECT_EQ(Bytes(Record(TEXT("Anna"))), Bytes(record));
    }
}

TEST_F(AccountSaving, ReadOnlyFileIsToldAndStays) {
    device.PutFile(settingsFile, "UserID=Old\r\n");
    device.SetReadOnly(settingsFile, true);
    const LMAccountRecord record = Record(TEXT("Anna"));
    ExpectFailure(ERROR_ACCESS_DENIED, LMAccountSave(&record));
    EXPECT_EQ("UserID=Old\r\n", SettingsFile());
}

TEST_F(AccountSaving, FullStorageIsTold) {
    device.SetFreeStorage(3);
    const LMAccountRecord record = Record(TEXT("Anna"));
    ExpectFailure(ERROR_DISK_FULL, LMAccountSave(&record));
    device.SetFreeStorage(std::nullopt);
    EXPECT_EQ("Use", SettingsFile());
}

TEST_F(AccountSaving, WithoutAFolderForApplicationDataThereIsNothing) {
    device.SetSpecialFolder(CSIDL_APPDATA, std::nullopt);
    const LMAccountRecord record = Record(TEXT("Anna"));
    EXPECT_EQ(0, LMAccountSave(&record));
    EXPECT_NE(DWORD{0}, GetLastError());
    LMAccountRecord loaded = record;
    EXPECT_EQ(0, LMAccountLoad(&loaded));
    EXPECT_NE(DWORD{0}, GetLastError());
    EXPECT_EQ(Bytes(record), Bytes(loaded));
}

TEST_F(AccountSaving, FileInThePlaceOfTheFolderIsTold) {
    device.PutFile(u"\\Application Data\\Orvande", "a file");
    const LMAccountRecord record = Record(TEXT("Anna"));
    EXPECT_EQ(0, LMAccountSave(&record));
    EXPECT_NE(DWORD{0}, GetLastError());
    EXPECT_EQ("a file", device.TakeFile(u"\\Application Data\\Orvande"));
}
