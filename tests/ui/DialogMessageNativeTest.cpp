/* What becomes of the messages that a dialog gets. */
#include "ui/DialogFixture.h"

TEST_F(DialogOnDevice, BackKeyIsHandedToTheFocusedControlAndDoesNotCloseTheDialog) {
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) {
        user.Type(FORM_FIELD, u"abc");
        user.PressBack();
        EXPECT_TRUE(user.IsOpen());
        EXPECT_EQ(u"ab", user.Text(FORM_FIELD));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    ASSERT_EQ(1u, device.Calls({"SHSendBackToFocusWindow"}).size());
    EXPECT_EQ(0u, device.Calls({"SHSendBackToFocusWindow"})[0].find("SHSendBackToFocusWindow(WM_HOTKEY, "));
}

TEST_F(DialogOnDevice, BackKeyIsHandedOnWithAllThatCameWithIt) {
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) {
        user.Send(WM_HOTKEY, 7, MAKELPARAM(3, VK_ESCAPE));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<std::string>{"SHSendBackToFocusWindow(WM_HOTKEY, 0x7, 0x1B0003)"}),
              device.Calls({"SHSendBackToFocusWindow"}));
}

TEST_F(DialogOnDevice, OtherHotKeysAreOrdinaryMessages) {
    FormDialog dialog;
    std::vector<LPARAM> seen;
    dialog.onMessage = [&](UINT message, WPARAM, LPARAM lParam) -> INT_PTR {
        if (message == WM_HOTKEY) seen.push_back(lParam);
        return 0;
    };
    device.UseDialog([](DialogUser& user) {
        user.Send(WM_HOTKEY, 1, MAKELPARAM(VK_ESCAPE, VK_F1));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<LPARAM>{MAKELPARAM(VK_ESCAPE, VK_F1)}), seen);
    EXPECT_EQ(noCalls, device.Calls({"SHSendBackToFocusWindow"}));
}

TEST_F(DialogOnDevice, WithoutTheOverrideTheBackKeyActsByItself) {
    FormDialog dialog;
    dialog.overrideBackKey = false;
    device.UseDialog([](DialogUser& user) { user.PressBack(); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    for (const std::string& call : device.Calls({"SendMessageW"}))
        EXPECT_EQ(std::string::npos, call.find("OVERRIDEKEY"));
}

TEST_F(DialogOnDevice, DoneEndsItWithOkCancelWithCancelOtherCommandsDoNot) {
    FormDialog done;
    device.UseDialog([](DialogUser& user) {
        user.Send(WM_COMMAND, 1016, 0);
        user.Tap(FORM_BUTTON);
        EXPECT_TRUE(user.IsOpen());
        user.PressButton(IDOK);
    });
    EXPECT_EQ(IDOK, done.DoModal(nullptr));
    FormDialog cancelled;
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, cancelled.DoModal(nullptr));
}

TEST_F(DialogOnDevice, OkAndCancelCountWhateverTheirNotificationCode) {
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) { user.Send(WM_COMMAND, MAKEWPARAM(IDOK, 5), 0); });
    EXPECT_EQ(IDOK, dialog.DoModal(nullptr));
}

TEST_F(DialogOnDevice, CommandsComeWithControlAndNotificationCode) {
    FormDialog dialog;
    struct Command {
        int id, notification;
        bool hasControl;
        bool operator==(const Command&) const = default;
    };
    std::vector<Command> commands;
    dialog.onCommand = [&](int id, HWND control, int notification) {
        if (id == FORM_BUTTON || id == 0xFFFF) commands.push_back({id, notification, control != nullptr});
    };
    device.UseDialog([&](DialogUser& user) {
        commands.clear();
        user.Tap(FORM_BUTTON);
        user.Send(WM_COMMAND, MAKEWPARAM(0xFFFF, 0xFFFF), 0);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<Command>{{FORM_BUTTON, BN_CLICKED, true}, {0xFFFF, 0xFFFF, false}}), commands);
}

TEST_F(DialogOnDevice, NotificationsReachTheDialogAndCountAsHandled) {
    FormDialog dialog;
    std::vector<WPARAM> seen;
    dialog.onNotify = [&](WPARAM wParam, LPARAM lParam) {
        seen.push_back(wParam);
        EXPECT_EQ(9u, reinterpret_cast<const NMHDR*>(lParam)->code);
        SetWindowLongPtrW(dialog.window, DWLP_MSGRESULT, 42);
    };
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(42, user.Notify(FORM_FIELD, 9)) << "the result of a message that was handled";
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<WPARAM>{FORM_FIELD}), seen);
}

TEST_F(DialogOnDevice, CommandsCountAsHandledWhetherOrNotTheyMeanAnything) {
    FormDialog dialog;
    dialog.onCommand = [&](int, HWND, int) { SetWindowLongPtrW(dialog.window, DWLP_MSGRESULT, 42); };
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(42, user.Send(WM_COMMAND, 1016, 0));
        EXPECT_EQ(42, user.Send(WM_COMMAND, IDCANCEL, 0));
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(DialogOnDevice, OfTheHotKeysOnlyTheBackKeyCountsAsHandled) {
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) {
        const auto proc = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(user.Window(), DWLP_DLGPROC));
        EXPECT_EQ(TRUE, proc(user.Window(), WM_HOTKEY, 0, MAKELPARAM(0, VK_ESCAPE)));
        EXPECT_EQ(FALSE, proc(user.Window(), WM_HOTKEY, 0, MAKELPARAM(0, VK_F1)));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, ResultOfOnMessageIsTheDialogProceduresOwn) {
    FormDialog dialog;
    dialog.onMessage = [](UINT message, WPARAM wParam, LPARAM lParam) -> INT_PTR {
        return message == WM_CTLCOLORSTATIC ? static_cast<INT_PTR>(wParam) * 10 + lParam : 0;
    };
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(42, user.Send(WM_CTLCOLORSTATIC, 4, 2)) << "this message's result is the procedure's";
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, InitialisationIsToldTheControlThatGetsTheFocusAndTheObject) {
    class Noting : public FormDialog {
    public:
        BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override {
            EXPECT_EQ(GetDlgItem(window, FORM_FIELD), reinterpret_cast<HWND>(wParam));
            EXPECT_EQ(this, reinterpret_cast<Dialog*>(lParam));
            isTold = true;
            return TRUE;
        }
        bool isTold = false;
    } dialog;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    EXPECT_TRUE(dialog.isTold);
}

TEST_F(DialogOnDevice, InitialisationMessageWithoutAnObjectIsIgnored) {
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) {
        const auto proc = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(user.Window(), DWLP_DLGPROC));
        EXPECT_EQ(0, proc(nullptr, WM_INITDIALOG, 0, 0));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(DialogOnDevice, WithoutOperationsOfItsOwnIsShownHearsEverythingAndEnds) {
    Dialog dialog(FORM_DIALOG);
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(FORM_FIELD, user.Focus()) << "the system has set it";
        EXPECT_EQ(0, user.Send(WM_APP, 0, 0));
        user.Notify(FORM_FIELD, 1);
        user.Timer(1);
        EXPECT_TRUE(user.IsOpen());
        user.PressButton(IDOK);
    });
    EXPECT_EQ(IDOK, dialog.DoModal(nullptr));
}
