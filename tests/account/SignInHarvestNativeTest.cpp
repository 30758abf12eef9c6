/* What translators find after an application has used the library: from the attach to the file's bytes. */
#include "account/SignInScreen.h"
#include "frame/LibraryEntry.h"

TEST_F(SignInScreen, TextsThatWereShownAgainAndAgainStandOnceInTheHarvest) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    translationCatalogue.WriteUntranslatedFile();
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(AttachLibrary(device.LibraryInstance(), DLL_PROCESS_ATTACH, nullptr));
        Run([this](DialogUser& user) {
            for (int attempt = 0; attempt < 2; ++attempt) {
                ExpectMessage();
                user.PressButton(IDOK);
            }
            Leave(user);
        });
    }
    translationCatalogue.WriteUntranslatedFile();
    std::string expected = "\xFF\xFE";
    for (const WCHAR* text :
         {TEXT("Cancel"), TEXT("Forgot"), TEXT("If you already have an account:"), TEXT("Menu"),
          TEXT("New Account"), TEXT("New Users:"), TEXT("Orvande Online"), TEXT("Password"),
          TEXT("Save password"), TEXT("Select Menu / New Account"), TEXT("Sign In"), TEXT("Sign in"),
          TEXT("Sign in to Your Account"), TEXT("User ID"),
          TEXT("You must provide a user name and password to access your account.")})
        expected += BytesOf(text) + BytesOf(TEXT("\tXXXX\r\n"));
    EXPECT_EQ(expected,
              device.TakeFile(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt").value_or("no file"));
}
