/* Settings files as they may be found, and the sign-in dialog that comes after. */
#include "account/AccountScreenTest.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"

namespace {

using namespace account_texts;

class AccountSettingsFile : public AccountScreenTest {
protected:
    /* Starts with what was found, expects these credentials in the dialog, and signs in with others. */
    void ExpectStartWith(const std::wstring& userId, const std::wstring& password) {
        StartAgain();
        EXPECT_EQ(userId, account.userId);
        EXPECT_EQ(password, account.password);
        server.Answer(MapShopReply().Int32(0).Int32(0).bytes);
        EXPECT_TRUE(SignInAs([&](const ScreenUser& user) {
            const HWND dialog = user.WaitForDialog(signInCaption);
            EXPECT_EQ(userId, TextOf(dialog, USER_ID_FIELD));
            EXPECT_EQ(userId.empty() ? L"" : password, TextOf(dialog, PASSWORD_FIELD));
            EXPECT_EQ(userId.empty() ? USER_ID_FIELD : PASSWORD_FIELD, FocusOf(dialog));
            TypeCredentials(dialog, L"Bob", L"Secret-2");
            PressSignIn(dialog);
        }));
        EXPECT_EQ(L"Bob", account.userId);
    }

    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

}  // namespace

TEST_F(AccountSettingsFile, PasswordsOfAnyFormAreReadAsFarAsTheyGo) {
    const struct {
        const char* saved;
        const WCHAR* password;
    } cases[] = {
        {"50c81cb536e86d02af73d9488c21f5ba", L"ab1x"},
        {"50C81CB536E86D02AF73D9488C21F5BA", L"ab1x"},
        {"50c8", L"ab"},
        {"50c", L"a"},  // an odd digit is ignored
        {"5", L""},
        {"50c81cb536e86d02af73d9488c21f5ba50c81cb5", L"ab1x"},
        {"5ax?xz", L"0t"},  // what is no digit counts as 0: 5a 00 00
        {"xyz", L""},
        {"00000000000000000000000000000000", L"t1w"},
        {"ffffffffffffffffffffffffffffffff", L"m9"},
        {"%35%30c8", L"ab"},  // encoded like any value
    };
    for (const auto& given : cases) {
        SCOPED_TRACE(given.saved);
        PutSettings("Passwd=" + std::string(given.saved) + "\r\nUserID=Anna\r\n");
        ExpectStartWith(L"Anna", given.password);
        EXPECT_EQ("UserID=Bob\r\n", SettingsFile());
    }
}

TEST_F(AccountSettingsFile, OddFilesAreReadAsFarAsTheyGo) {
    const struct {
        const char* file;
        const WCHAR* userId;
        const WCHAR* password;
    } cases[] = {
        {"", L"", L""},
        {"UserID=Anna", L"Anna", L""},
        {"UserID=\r\nPasswd=50c8\r\n", L"", L"ab"},
        {"Passwd=50c8\r\n", L"", L"ab"},
        {"userid=Anna\r\npasswd=50c8\r\n", L"", L""},
        {"UserID=Anna\nPasswd=\n", L"Anna", L""},
        {"UserID=Anna\nUserID=%41da\n", L"Ada", L""},
        {"\xEF\xBB\xBFUserID=Anna\n", L"", L""},
        {"\x89PNG\r\n\x1A\n=====&&&&\xFF\xFE", L"", L""},
    };
    for (const auto& given : cases) {
        SCOPED_TRACE(given.file);
        PutSettings(given.file);
        ExpectStartWith(given.userId, given.password);
        EXPECT_EQ("UserID=Bob\r\n", SettingsFile());
    }
}

TEST_F(AccountSettingsFile, WrittenInUnicodeIsNotUnderstoodAndReplaced) {
    PutSettings("\xFF\xFE" + BytesOf(L"UserID=Anna\r\n"));
    StartAgain();
    server.Answer(MapShopReply().Int32(0).Int32(0).bytes);
    EXPECT_TRUE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        TypeCredentials(dialog, L"Bob", L"Secret-2");
        PressSignIn(dialog);
    }));
    EXPECT_EQ("UserID=Bob\r\n", SettingsFile());
}

TEST_F(AccountSettingsFile, VeryLongValuesAreShownWhole) {
    const std::string longId(20000, 'a');
    PutSettings("UserID=" + longId + "\r\nPasswd=" + std::string(20000, '5') + "\r\n");
    // Of the bytes, all 55, only the first and the twelfth stand for something.
    ExpectStartWith(std::wstring(20000, L'a'), L"ds");
}

TEST_F(AccountSettingsFile, ReadOnlyOneStaysAndSigningInSucceeds) {
    PutSettings("UserID=Anna\r\n");
    ASSERT_TRUE(SetFileAttributesW(SettingsPath().c_str(), FILE_ATTRIBUTE_READONLY));
    // Wine lets its user write what is read-only if that is root; open like this nobody can write it.
    const HANDLE held = CreateFileW(SettingsPath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    ExpectStartWith(L"Anna", L"");
    CloseHandle(held);
    EXPECT_EQ("UserID=Anna\r\n", SettingsFile());
}

TEST_F(AccountSettingsFile, FolderInItsPlaceIsNoSettingsAndStays) {
    ASSERT_TRUE(CreateDirectoryW(SettingsPath().c_str(), nullptr));
    ExpectStartWith(L"", L"");
    EXPECT_NE(0U, GetFileAttributesW(SettingsPath().c_str()) & FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(AccountSettingsFile, FileInPlaceOfItsFolderIsNoSettingsAndStays) {
    const std::wstring folder = PathOf(L"Application Data\\Orvande");
    PutFile(folder, "in the way");
    ExpectStartWith(L"", L"");
    EXPECT_EQ("in the way", TakeFile(folder));
}
