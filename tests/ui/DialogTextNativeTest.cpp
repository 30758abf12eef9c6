/* The texts of a dialog's controls and of its menu bar. */
#include "ui/DialogFixture.h"

TEST_F(DialogOnDevice, TextsOfControlsAreSetAndReadWhole) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(TEXT(""), dialog.GetItemText(FORM_FIELD));
        const WideString text = WideString(500, u'\x4E00') + TEXT("\xD83D\xDE00\"\n");
        dialog.SetItemText(FORM_FIELD, text);
        EXPECT_EQ(text, dialog.GetItemText(FORM_FIELD));
        EXPECT_EQ(text, user.Text(FORM_FIELD));
        dialog.SetItemText(FORM_FIELD, {});
        EXPECT_EQ(TEXT(""), dialog.GetItemText(FORM_FIELD));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, ControlThatIsNotThereHasAnEmptyText) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        dialog.SetItemText(4711, TEXT("Lost"));
        EXPECT_EQ(TEXT(""), dialog.GetItemText(4711));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, TextThatCannotBeReadIsEmpty) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        user.Type(FORM_FIELD, u"typed");
        device.FailCall("GetDlgItemTextW", 1, ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_EQ(TEXT(""), dialog.GetItemText(FORM_FIELD));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, TextOfAMenuBarButtonIsSetByItsCommandWithNothingButTheText) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        device.ForgetCalls();
        dialog.SetMenuBarButtonText(IDOK, TEXT("Send"));
        EXPECT_EQ((std::vector<std::string>{"SendMessageW(bar 1, TB_SETBUTTONINFOW, 1, "
                                            R"({size ok, mask 0x2, text "Send", length 0}) = 1)"}),
                  device.Calls({"SendMessageW"}));
        EXPECT_EQ(u"Send", user.MenuBar()[0].text);
        EXPECT_EQ(IDOK, user.MenuBar()[0].command);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}
