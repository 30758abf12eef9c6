/* The program that has the library in itself, as devices get it: its user, its dialogs, a running service. */
#include <unistd.h>

#include "Device.h"
#include "ImageFiles.h"
#include "Program.h"
#include "RunningService.h"
#include "network/NetworkWeb.h"
#include "resources/ResourceIds.h"
#include "support/DeviceTest.h"

namespace {

constexpr char16_t settingsFile[] = u"\\Application Data\\Orvande\\settings.ini";

class SigninProgram : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        device.AddHost(serviceHost, 80, HostOnLoopback(PortOfService()));
    }

    static ProgramResult Run() { return RunProgram(ImageFile("signin.exe"), u""); }

    ProgramResult Run(const DialogScript& script) {
        device.UseDialog(script);
        return Run();
    }

    void ExpectMessage(const std::function<void()>& action, std::u16string_view text) {
        device.AnswerMessageBox(IDOK);
        action();
        ASSERT_FALSE(device.MessageBoxes().empty());
        EXPECT_EQ(0u, device.MessageBoxes().back().text.find(text));
        EXPECT_EQ(u"Orvande Online", device.MessageBoxes().back().caption);
    }

    std::string SettingsFile() const { return device.TakeFile(settingsFile).value_or("no file"); }

    /* A name that no other test, of this run or an earlier one, has created. */
    static std::u16string NewUser() {
        static int users = 0;
        std::u16string name = u"Anna";
        for (const char digit : std::to_string(getpid()) + "x" + std::to_string(++users))
            name += static_cast<char16_t>(digit);
        return name;
    }

    static std::string Narrow(const std::u16string& text) { return {text.begin(), text.end()}; }

    /* Creates the account in the program's dialogs. */
    ProgramResult Create(const std::u16string& user) {
        device.UseDialog([](DialogUser& dialog) { dialog.ChooseMenuItem(u"New Account"); });
        device.UseDialog([&](DialogUser& dialog) {
            dialog.Type(USER_ID_FIELD, user);
            dialog.Type(PASSWORD_FIELD, u"secret1");
            dialog.Type(RETYPE_FIELD, u"secret1");
            dialog.Type(NAME_FIELD, u"Anna Berg");
            dialog.Type(EMAIL_FIELD, user + u"@example.org");
            dialog.PressButton(u"Done");
        });
        return Run();
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(SigninProgram, CreatedAccountSignsInAndIsRemembered) {
    const std::u16string user = NewUser();
    const ProgramResult created = Create(user);
    EXPECT_EQ(0u, created.exitCode);
    EXPECT_EQ("Signed in as " + Narrow(user) + "\n", created.output);
    EXPECT_EQ("UserID=" + Narrow(user) + "\r\n", SettingsFile());

    const ProgramResult again = Run([&](DialogUser& dialog) {
        EXPECT_EQ(u"Sign in to Your Account", dialog.Caption());
        EXPECT_EQ(user, dialog.Text(USER_ID_FIELD));
        EXPECT_EQ(PASSWORD_FIELD, dialog.Focus());
        dialog.Type(PASSWORD_FIELD, u"secret2");
        ExpectMessage([&] { dialog.PressButton(u"Sign in"); }, u"The Password is not correct.");
        dialog.Type(PASSWORD_FIELD, u"secret1");
        dialog.Check(SAVE_PASSWORD_BOX);
        dialog.PressButton(u"Sign in");
    });
    EXPECT_EQ(0u, again.exitCode);
    EXPECT_NE(std::string::npos, SettingsFile().find("Passwd="));
    EXPECT_EQ(std::string::npos, SettingsFile().find("secret1"));

    const ProgramResult saved = Run([](DialogUser& dialog) {
        EXPECT_EQ(u"*******", dialog.Text(PASSWORD_FIELD));
        dialog.PressButton(u"Sign in");
    });
    EXPECT_EQ("Signed in as " + Narrow(user) + "\n", saved.output);
    EXPECT_EQ("UserID=" + Narrow(user) + "\r\n", SettingsFile())
        << "without the tick the password is not kept";
}

TEST_F(SigninProgram, NameThatIsTakenIsTold) {
    const std::u16string user = NewUser();
    Create(user);
    device.UseDialog([](DialogUser& dialog) { dialog.ChooseMenuItem(u"New Account"); });
    device.UseDialog([&](DialogUser& dialog) {
        EXPECT_EQ(u"Create Account", dialog.Caption());
        dialog.Type(USER_ID_FIELD, user);
        dialog.Type(PASSWORD_FIELD, u"secret1");
        dialog.Type(RETYPE_FIELD, u"secret");
        ExpectMessage([&] { dialog.PressButton(u"Done"); }, u"The passwords do not match");
        dialog.Type(RETYPE_FIELD, u"secret1");
        dialog.Type(EMAIL_FIELD, u"other." + user + u"@example.org");
        ExpectMessage([&] { dialog.PressButton(u"Done"); }, u"This user name is already in use.");
        dialog.Type(USER_ID_FIELD, NewUser());
        dialog.PressButton(u"Done");
    });
    EXPECT_EQ(0u, Run().exitCode);
}

TEST_F(SigninProgram, ForgottenPasswordOpensThePageAndCancelSignsNobodyIn) {
    const ProgramResult result = Run([this](DialogUser& dialog) {
        dialog.ChooseMenuItem(u"Forgot");
        EXPECT_EQ(u"http://www.orvande.example/forgot.htm", device.StartedPrograms().back().file);
        dialog.ChooseMenuItem(u"Cancel");
    });
    EXPECT_EQ(1u, result.exitCode);
    EXPECT_EQ("Nobody is signed in.\n", result.output);
    EXPECT_FALSE(device.Exists(settingsFile));
}

TEST_F(SigninProgram, DialogsComeFromTheProgramsOwnResourcesInTheUsersLanguage) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("German")));
    device.PutFile(u"\\Program Files\\App\\Program.German.txt",
                   "Sign in to Your Account\tAnmelden\nPassword\tKennwort\nCancel\tAbbrechen\n");
    Run([](DialogUser& dialog) {
        EXPECT_EQ(u"Anmelden", dialog.Caption());
        const std::vector<std::u16string> texts = dialog.Statics();
        EXPECT_NE(texts.end(), std::find(texts.begin(), texts.end(), u"Kennwort"));
        dialog.ChooseMenuItem(u"Abbrechen");
    });
}
