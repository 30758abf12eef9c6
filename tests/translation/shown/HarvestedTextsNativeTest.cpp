/* The texts that the build finds are those that the library looks up: all screens are shown, and everything
 * goes wrong that can. */
#include <gmock/gmock.h>

#include "account/AccountTest.h"
#include "account/SignInDialog.h"
#include "frame/LibraryEntry.h"
#include "texts/ShownTexts.h"
#include "transport/WebConnection.h"

namespace {

class HarvestedTexts : public AccountTest {
protected:
    void LoadLibrary() {
        translationCatalogue.WriteUntranslatedFile({}, {});
        ASSERT_TRUE(AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr));
    }

    void ConnectWhileRoaming() {
        SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("System\\State\\Phone"), TEXT("Status"), REG_DWORD,
                         {"\0\2\0\0", 4});
        device.AnswerMessageBox(IDOK);
        WebConnection connection(TEXT("online.orvande.example"), true, false);
        connection.ownerWindow = reinterpret_cast<HWND>(uintptr_t{0x1230});
        connection.Connect();
    }

    /* Presses OK; the service answers this. */
    void TryWith(DialogUser& user, WebReply reply) {
        Answer(std::move(reply));
        Try(user);
    }
    void TryWithStatus(DialogUser& user, int32_t status) {
        TryWith(user, WebReply::WithBody(MapShopReply().Int32(status).bytes));
    }
    void Try(DialogUser& user) {
        device.AnswerMessageBox(IDOK);
        user.PressButton(IDOK);
    }

    void FailToSignIn(DialogUser& user) {
        Try(user);
        user.Type(USER_ID_FIELD, u"Anna");
        for (const int32_t status : {4, 5, 6}) {
            user.Type(PASSWORD_FIELD, u"secret1");
            TryWithStatus(user, status);
        }
    }

    void FailToCreate(DialogUser& user) {
        user.Type(PASSWORD_FIELD, u"secret1");
        Try(user);
        user.Type(RETYPE_FIELD, u"secret1");
        TryWith(user, WebReply::Refused());
        TryWith(user, WebReply::Nothing());
        for (const int32_t status : {2, 3, 14, 99, 13})
            TryWithStatus(user, status);
        EXPECT_FALSE(user.IsOpen());
    }
};

}  // namespace

TEST_F(HarvestedTexts, AreTheTextsOfThisVersion) {
    LoadLibrary();
    ConnectWhileRoaming();
    device.UseDialog([this](DialogUser& user) {
        FailToSignIn(user);
        user.ChooseMenuItem(u"New Account");
        user.ChooseMenuItem(IDCANCEL);
    });
    device.UseDialog([this](DialogUser& user) { FailToCreate(user); });
    EXPECT_FALSE(RunSignInDialog(account, nullptr));

    std::set<WideString> texts;
    for (const ShownText& shown : AllShownTexts())
        texts.insert(shown.text);
    EXPECT_THAT(translationCatalogue.UntranslatedTexts(), testing::ContainerEq(texts));
}
