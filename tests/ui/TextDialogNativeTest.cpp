#include "ui/TextDialog.h"

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

class TextDialogOnDevice : public ScreenTest {
protected:
    int Run(const DialogScript& script, int control = SHOWN_TEXT) {
        device.UseDialog(script);
        return RunTextDialog(TEXT_DIALOG, nullptr, TEXT("All maps are free."), control, SIGN_IN_MENU_BAR);
    }
};

}  // namespace

TEST_F(TextDialogOnDevice, ShowsItsTextInTheControlUntranslated) {
    Translate("All maps are free.\tNever asked for\nAbout\t\xC0 propos\n");
    Run([](DialogUser& user) {
        EXPECT_EQ(u"\u00C0 propos", user.Caption());
        EXPECT_EQ(u"All maps are free.", user.Text(SHOWN_TEXT));
        user.ChooseMenuItem(IDCANCEL);
    });
}

TEST_F(TextDialogOnDevice, WithoutAControlSetsNoText) {
    Run(
        [](DialogUser& user) {
            EXPECT_EQ(u"Nothing yet", user.Text(SHOWN_TEXT));
            user.ChooseMenuItem(IDCANCEL);
        },
        0);
    EXPECT_EQ(std::vector<std::string>{}, device.Calls({"SetWindowTextW"}));
}

TEST_F(TextDialogOnDevice, ClosedByAMenuCommandGivesThatCommand) {
    EXPECT_EQ(1016, Run([](DialogUser& user) { user.ChooseMenuItem(1016); }));
}

TEST_F(TextDialogOnDevice, ClosedByOkGivesOne) {
    EXPECT_EQ(1, Run([](DialogUser& user) { user.PressButton(IDOK); }));
}

TEST_F(TextDialogOnDevice, ClosedByOkWithANotificationCodeGivesOne) {
    EXPECT_EQ(1, Run([](DialogUser& user) { user.Send(WM_COMMAND, MAKEWPARAM(IDOK, 1), 0); }));
}

TEST_F(TextDialogOnDevice, ClosedByCancelGivesTwo) {
    EXPECT_EQ(2, Run([](DialogUser& user) { user.ChooseMenuItem(IDCANCEL); }));
    EXPECT_EQ(2, Run([](DialogUser& user) { user.Send(WM_COMMAND, MAKEWPARAM(IDCANCEL, 1), 0); }));
}

TEST_F(TextDialogOnDevice, OtherCommandsWithANotificationCodeDoNotCloseIt) {
    EXPECT_EQ(2, Run([](DialogUser& user) {
                  for (const unsigned notification : {1u, 2u, 0x8000u, 0xFFFFu})
                      user.Send(WM_COMMAND, MAKEWPARAM(1016, notification), 0);
                  EXPECT_TRUE(user.IsOpen());
                  user.ChooseMenuItem(IDCANCEL);
              }));
}

TEST_F(TextDialogOnDevice, LeavesTheBackKeyItsOwnMeaning) {
    EXPECT_EQ(2, Run([](DialogUser& user) { user.PressBack(); }));
    for (const std::string& call : device.Calls({"SendMessageW"}))
        EXPECT_EQ(std::string::npos, call.find("OVERRIDEKEY"));
}

TEST_F(TextDialogOnDevice, ThatCannotBeShownGivesTwo) {
    ExpectMessage();
    EXPECT_EQ(2, RunTextDialog(999, nullptr, TEXT("text"), SHOWN_TEXT, 0));
    EXPECT_EQ(u"Dialog 999 failed: err=0x716", device.MessageBoxes()[0].text);
}

TEST_F(TextDialogOnDevice, WithoutATemplateIdGivesTwo) {
    EXPECT_EQ(2, RunTextDialog(0, nullptr, TEXT("text"), SHOWN_TEXT, 0));
}

TEST_F(TextDialogOnDevice, LeavesTheFocusToTheSystem) {
    for (const int control : {0, SHOWN_TEXT}) {
        TextDialog dialog(TEXT_DIALOG, TEXT("text"), control, SIGN_IN_MENU_BAR);
        device.UseDialog([&](DialogUser& user) {
            EXPECT_EQ(TRUE, dialog.OnInitDialog(0, 0));
            user.ChooseMenuItem(IDCANCEL);
        });
        dialog.DoModal(nullptr);
    }
}

TEST_F(TextDialogOnDevice, IsOwnedByItsParent) {
    FormDialog parent;
    device.UseDialog([&](DialogUser& user) {
        device.UseDialog([](DialogUser& inner) { inner.ChooseMenuItem(IDCANCEL); });
        RunTextDialog(TEXT_DIALOG, user.Window(), TEXT("text"), SHOWN_TEXT, SIGN_IN_MENU_BAR);
        EXPECT_EQ(user.Window(), device.Dialogs().at(1).owner);
        Cancel(user);
    });
    parent.DoModal(nullptr);
}
