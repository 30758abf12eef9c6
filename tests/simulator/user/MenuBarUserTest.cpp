#include "user/Users.h"

TEST_F(Users, PressesButtonsOfTheBarByCommandOrText) {
    InDialog(115, [&](DialogUser& user) {
        user.PressButton(u"Done");
        EXPECT_FALSE(user.IsOpen());
    });
    EXPECT_EQ(Lines{"1:0"}, dialog.commands);
    EXPECT_EQ(dialog.bar, dialog.commandWindow);
    EXPECT_EQ(IDOK, result);
    InDialog(115, [&](DialogUser& user) { user.PressButton(IDCANCEL); });
    EXPECT_EQ(IDCANCEL, result);
}

TEST_F(Users, CannotPressWhatTheBarDoesNotShow) {
    InDialog(116, [&](DialogUser& user) {
        user.PressButton(u"Cancel");
        EXPECT_EQ(R"(the menu bar shows no button "Cancel")", Complaint());
        user.PressButton(0);
        EXPECT_EQ("the menu bar shows no button with the command 0", Complaint()) << "it drops down";
        SendMessageW(dialog.bar, TB_ENABLEBUTTON, 1, FALSE);
        user.PressButton(1);
        EXPECT_EQ("button with the command 1 is disabled", Complaint());
        EXPECT_EQ(Lines{}, dialog.commands);
    });
}

TEST_F(Users, CannotUseABarThatIsNotThere) {
    InDialog(0, [](DialogUser& user) {
        user.PressButton(1);
        EXPECT_EQ("there is no menu bar", Complaint());
        user.ChooseMenuItem(1016u);
        EXPECT_EQ("there is no menu bar", Complaint());
    });
}

TEST_F(Users, ChoosesItemsOfThePopUpHoweverDeep) {
    InDialog(116, [&](DialogUser& user) {
        user.ChooseMenuItem(u"First");
        user.ChooseMenuItem(1018u);
        user.ChooseMenuItem(u"Deep");
        EXPECT_EQ((Lines{"1016:0", "1018:0", "1019:0"}), dialog.commands);
        EXPECT_EQ(nullptr, dialog.commandWindow);
        user.ChooseMenuItem(u"Cancel");
        EXPECT_FALSE(user.IsOpen());
    });
    EXPECT_EQ(IDCANCEL, result);
}

TEST_F(Users, CannotChooseWhatThePopUpDoesNotOffer) {
    InDialog(116, [&](DialogUser& user) {
        user.ChooseMenuItem(u"Done");
        EXPECT_EQ(R"(no pop-up of the menu bar shows the item "Done")", Complaint())
            << "a button, not in a pop-up";
        user.ChooseMenuItem(1u);
        EXPECT_EQ("no pop-up of the menu bar shows the command 1", Complaint());
        user.ChooseMenuItem(u"Grey");
        EXPECT_EQ(R"(the item "Grey" is disabled)", Complaint());
        user.ChooseMenuItem(u"More");
        EXPECT_EQ(R"(no pop-up of the menu bar shows the item "More")", Complaint()) << "a pop-up itself";
        EXPECT_EQ(Lines{}, dialog.commands);
    });
}

TEST_F(Users, BackKeyCancelsWhenNothingOverridesIt) {
    InDialog(115, [](DialogUser& user) { user.PressBack(); });
    EXPECT_EQ(Lines{"2:0"}, dialog.commands);
    EXPECT_EQ(IDCANCEL, result);
}

TEST_F(Users, BackKeyIsReportedWhereTheBarOverridesIt) {
    LPARAM parameter = 0;
    dialog.On(WM_HOTKEY, [&](HWND, WPARAM, LPARAM lParam) {
        parameter = lParam;
        return TRUE;
    });
    InDialog(115, [&](DialogUser& user) {
        EXPECT_TRUE(SendMessageW(dialog.bar, SHCMBM_OVERRIDEKEY, VK_ESCAPE, 0x00030003));
        user.PressBack();
        EXPECT_TRUE(user.IsOpen());
        EXPECT_EQ(VK_ESCAPE, HIWORD(parameter));
        EXPECT_EQ(Lines{}, dialog.commands);
        parameter = 0;
        SendMessageW(dialog.bar, SHCMBM_OVERRIDEKEY, VK_ESCAPE, MAKELPARAM(SHMBOF_NOTIFY, 0));
        user.PressBack();
        EXPECT_EQ(0, parameter) << "no notification; the other flag stays";
        EXPECT_TRUE(user.IsOpen());
        SendMessageW(dialog.bar, SHCMBM_OVERRIDEKEY, VK_ESCAPE, MAKELPARAM(SHMBOF_NODEFAULT, 0));
        user.PressBack();
        EXPECT_FALSE(user.IsOpen());
    });
    EXPECT_EQ("SendMessageW(bar 1, SHCMBM_OVERRIDEKEY, 27, 0x00030003) = 1",
              device.Calls({"SendMessageW"})[0]);
}
