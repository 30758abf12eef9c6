/* What the sign-in dialog does beside signing in: its menu, and the Back key. */
#include "account/SignInScreen.h"

TEST_F(SignInScreen, WhatIsPressedWhileAMessageIsShownCountsForNothing) {
    Answer(MapShopReply().Int32(5));
    EXPECT_FALSE(Run([this](DialogUser& user) {
        TypeCredentials(user);
        EnableWindow(user.Window(), FALSE);
        for (const int command : {IDOK, IDCANCEL, NEW_ACCOUNT_COMMAND, FORGOT_COMMAND})
            SendMessageW(user.Window(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        EnableWindow(user.Window(), TRUE);
        EXPECT_TRUE(user.IsOpen());
        EXPECT_TRUE(device.Requests().empty());
        EXPECT_TRUE(device.StartedPrograms().empty());
        EXPECT_EQ(1u, device.Dialogs().size());
        Leave(user);
    }));
}

TEST_F(SignInScreen, ForgotOpensTheServicesPageAndStays) {
    EXPECT_FALSE(Run([this](DialogUser& user) {
        user.ChooseMenuItem(u"Forgot");
        EXPECT_TRUE(user.IsOpen());
        ASSERT_EQ(1u, device.StartedPrograms().size());
        const StartedProgram& program = device.StartedPrograms()[0];
        EXPECT_EQ(u"http://www.orvande.example/forgot.htm", program.file);
        EXPECT_EQ(u"open", program.verb);
        EXPECT_EQ(user.Window(), program.owner);
        EXPECT_EQ(0u, program.mask);
        Leave(user);
    }));
    EXPECT_EQ(0u, device.CountCalls("WaitForSingleObject"));
}

TEST_F(SignInScreen, ForgotPageThatCannotBeOpenedChangesNothing) {
    device.FailCall("ShellExecuteExW", 1, ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(Run([](DialogUser& user) {
        user.ChooseMenuItem(u"Forgot");
        EXPECT_TRUE(user.IsOpen());
        Leave(user);
    }));
}

TEST_F(SignInScreen, CommandsOfTheMenuWithANotificationCodeAreIgnored) {
    EXPECT_FALSE(Run([this](DialogUser& user) {
        user.Send(WM_COMMAND, MAKEWPARAM(FORGOT_COMMAND, 1), 0);
        user.Send(WM_COMMAND, MAKEWPARAM(NEW_ACCOUNT_COMMAND, 1), 0);
        EXPECT_TRUE(device.StartedPrograms().empty());
        EXPECT_EQ(1u, device.Dialogs().size());
        Leave(user);
    }));
}

TEST_F(SignInScreen, NewAccountTakesTheTypedCredentialsAlongAndSignsIn) {
    Accept();
    device.UseDialog([this](DialogUser& user) {
        TypeCredentials(user);
        user.ChooseMenuItem(u"New Account");
        EXPECT_FALSE(user.IsOpen());
        EXPECT_EQ(TEXT("Anna2"), account.userId);
    });
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(u"Create Account", user.Caption());
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        EXPECT_EQ(u"********", user.Text(PASSWORD_FIELD));
        user.Type(USER_ID_FIELD, u"Anna2");
        user.Type(RETYPE_FIELD, u"Secret-1");
        user.PressButton(u"Done");
    });
    EXPECT_TRUE(RunSignInDialog(account, nullptr));
    EXPECT_EQ(TEXT("Anna2"), account.userId);
    EXPECT_EQ(TEXT("Secret-1"), account.password);
    EXPECT_EQ("UserID=Anna2\r\n", SettingsFile());
    EXPECT_EQ("dialog 1", device.Dialogs().at(1).ownerName);
}

TEST_F(SignInScreen, NewAccountThatIsGivenUpStaysAndKeepsTheFields) {
    device.UseDialog([](DialogUser& user) {
        TypeCredentials(user);
        user.ChooseMenuItem(NEW_ACCOUNT_COMMAND);
        EXPECT_TRUE(user.IsOpen());
        EXPECT_EQ(u"Anna", user.Text(USER_ID_FIELD));
        Leave(user);
    });
    device.UseDialog([](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Other");
        user.PressButton(u"Cancel");
    });
    EXPECT_FALSE(RunSignInDialog(account, nullptr));
    EXPECT_EQ(TEXT("Anna"), account.userId) << "nothing is taken over before Done";
}

TEST_F(SignInScreen, CancelIsNotSignedInAndSavesNothing) {
    EXPECT_FALSE(Run([](DialogUser& user) {
        TypeCredentials(user);
        Leave(user);
    }));
    EXPECT_EQ(TEXT(""), account.userId);
    EXPECT_EQ("no file", SettingsFile());
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(SignInScreen, BackKeyDeletesInTheFieldAndDoesNotCloseIt) {
    EXPECT_FALSE(Run([](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        user.PressBack();
        EXPECT_EQ(u"Ann", user.Text(USER_ID_FIELD));
        Leave(user);
    }));
}

TEST_F(SignInScreen, NewAccountsCredentialsStandInTheFieldsWhenTheDialogEnds) {
    Accept();
    device.UseDialog([](DialogUser& user) { user.ChooseMenuItem(NEW_ACCOUNT_COMMAND); });
    device.UseDialog([this](DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Berta");
        user.Type(PASSWORD_FIELD, u"secret2");
        user.Type(RETYPE_FIELD, u"secret2");
        device.ForgetCalls();
        user.PressButton(IDOK);
    });
    EXPECT_TRUE(RunSignInDialog(account, nullptr));
    const std::vector<std::string> expected = {
        "EndDialog(dialog 2, 1) = TRUE", R"(SetWindowTextW(control 1001 of dialog 1, "Berta") = TRUE)",
        R"(SetWindowTextW(control 1003 of dialog 1, "secret2") = TRUE)", "EndDialog(dialog 1, 1) = TRUE"};
    EXPECT_EQ(expected, device.Calls({"SetWindowTextW", "EndDialog"}));
}
