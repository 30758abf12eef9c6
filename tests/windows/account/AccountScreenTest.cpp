#include "account/AccountScreenTest.h"

#include "account/AccountSettings.h"
#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "frame/Folders.h"
#include "frame/LibraryEntry.h"
#include "ui/MessageBoxes.h"

void AccountScreenTest::SetUp() {
    DialogTest::SetUp();
    AttachLibrary(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr);
    const std::wstring folder = PathOf(L"Application Data");
    MakeFolder(folder);
    applicationData.emplace(L"AppData", folder);
    ASSERT_EQ(folder, GetSpecialFolderPath(CSIDL_APPDATA, {})) << "the settings would go elsewhere";
    account.productCode = 0x01020304;
    account.productName = L"Orvande Test Navigator";
}

void AccountScreenTest::TearDown() {
    applicationData.reset();
    SetMessageBoxCaption({});
    DialogTest::TearDown();
}

bool AccountScreenTest::SignInAs(ScreenUser::Script script) {
    const ScreenUser user(std::move(script));
    return RunSignInDialog(account, nullptr);
}

bool AccountScreenTest::Create(ScreenUser::Script script) {
    const ScreenUser user(std::move(script));
    return CreateAccount(account, nullptr);
}

void AccountScreenTest::StartAgain() {
    Account fresh;
    fresh.productCode = account.productCode;
    fresh.productName = account.productName;
    LoadAccountSettings(fresh);
    account = fresh;
}

void AccountScreenTest::TypeCredentials(HWND dialog, const std::wstring& userId,
                                        const std::wstring& password) {
    Type(dialog, USER_ID_FIELD, userId);
    Type(dialog, PASSWORD_FIELD, password);
}

void AccountScreenTest::Fill(HWND dialog, const NewAccount& values) {
    TypeCredentials(dialog, values.userId, values.password);
    Type(dialog, RETYPE_FIELD, values.retyped);
    Type(dialog, NAME_FIELD, values.name);
    Type(dialog, EMAIL_FIELD, values.email);
}

void AccountScreenTest::ExpectMessage(const ScreenUser& user, HWND owner, const std::wstring& text,
                                      const WCHAR* icon) {
    const ScreenUser::Message message = user.TakeMessage(account_texts::title);
    EXPECT_EQ(text, message.text);
    EXPECT_EQ(icon ? LoadIconW(nullptr, icon) : nullptr, message.icon);
    EXPECT_EQ(owner, message.owner);
    if (IsWindow(owner)) user.WaitForDialog(TextOf(owner));
}

std::string AccountScreenTest::SettingsFile() {
    return TakeFile(SettingsPath()).value_or("no file");
}

void AccountScreenTest::PutSettings(std::string_view bytes) {
    PutFile(SettingsPath(), bytes);
}

std::wstring AccountScreenTest::SettingsPath() {
    return GetSpecialFolderPath(CSIDL_APPDATA, L"Orvande") + L"\\settings.ini";
}

void AccountScreenTest::Choose(const ScreenUser& user, HWND dialog, int item) {
    PressButton(MenuBarOf(dialog), 1);
    user.WaitForMenu();
    for (int i = 0; i <= item; ++i)
        PressKey(dialog, VK_DOWN);
    PressKey(dialog, VK_RETURN);
}
