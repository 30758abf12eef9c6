#include "ui/Dialog.h"

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

class DialogOnDevice : public ScreenTest {
protected:
    void ExpectBox(size_t index, std::u16string_view text) {
        ASSERT_LT(index, device.MessageBoxes().size());
        const ShownMessageBox& box = device.MessageBoxes()[index];
        EXPECT_EQ(text, box.text);
        EXPECT_EQ(u"Internal error", box.caption);
        EXPECT_EQ(UINT{MB_ICONHAND}, box.flags);
    }
};

const std::vector<std::string> noCalls;

}  // namespace

TEST_F(DialogOnDevice, WithoutATemplateIdIsCancelledAtOnceAndShowsNothing) {
    FormDialog dialog(0);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(noCalls, device.Calls());
}

TEST_F(DialogOnDevice, WhoseTemplateIsMissingSaysSoWithTheSystemsErrorCode) {
    ExpectMessage();
    FormDialog dialog(999);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    static_assert(ERROR_RESOURCE_NAME_NOT_FOUND == 0x716);
    ExpectBox(0, u"Dialog 999 failed: err=0x716");
    EXPECT_EQ(nullptr, device.MessageBoxes()[0].owner);
}

TEST_F(DialogOnDevice, FailureBoxIsOwnedByTheParent) {
    FormDialog parent;
    device.UseDialog([&](DialogUser& user) {
        ExpectMessage();
        FormDialog missing(999);
        EXPECT_EQ(-1, missing.DoModal(user.Window()));
        EXPECT_EQ(user.Window(), device.MessageBoxes()[0].owner);
        Cancel(user);
    });
    parent.DoModal(nullptr);
}

TEST_F(DialogOnDevice, FailureIsToldInEnglishWhateverTheLanguage) {
    Translate("Dialog %d failed: err=0x%x\tErreur\nInternal error\tErreur interne\n");
    ExpectMessage();
    FormDialog dialog(999);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    ExpectBox(0, u"Dialog 999 failed: err=0x716");
}

TEST_F(DialogOnDevice, FromAMissingResDllFailsWithBothBoxes) {
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog(5000);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_EQ(u"Error", device.MessageBoxes()[0].caption);
    ExpectBox(1, u"Dialog 5000 failed: err=0x7e");
}

TEST_F(DialogOnDevice, OnlyTheLow16BitsOfTheTemplateIdNameTheResource) {
    const HINSTANCE resDll = device.AddModule(u"Res.dll");
    device.SetResources(resDll, ReadResourceFile(ORVANDE_TEST_RESOURCES));
    FormDialog dialog(0x50000 + FORM_DIALOG);
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ((std::vector<std::string>{"FindResourceW(Res.dll, 202, RT_DIALOG) = resource"}),
              device.Calls({"FindResourceW"}));
}

TEST_F(DialogOnDevice, FillsTheScreenAndHasTheDefaultMenuBar) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(240, user.Look().place.right - user.Look().place.left);
        const std::vector<ShownButton> buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Done", buttons[0].text);
        EXPECT_EQ(IDOK, buttons[0].command);
        EXPECT_EQ(u"Cancel", buttons[1].text);
        EXPECT_EQ(IDCANCEL, buttons[1].command);
        EXPECT_EQ(user.Window(), dialog.window);
        EXPECT_NE(nullptr, dialog.menuBarWindow);
        EXPECT_NE(nullptr, dialog.commandMenu);
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(nullptr, dialog.window);
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(DialogOnDevice, IsSetUpInOrderFromItsTextsToItsOwnInitialisation) {
    Translate("A form\tFormulaire\nCancel\tAnnuler\n");
    FormDialog dialog;
    dialog.onInit = [] { SetFocus(nullptr); };
    SetCursor(device.WaitCursor());
    device.UseDialog(Cancel);
    device.ForgetCalls();
    dialog.DoModal(nullptr);
    std::vector<std::string> calls =
        device.Calls({"FindResourceW", "SetWindowTextW", "SetCursor", "SHInitDialog", "SHCreateMenuBar",
                      "SendMessageW", "SetMenuItemInfoW", "SetFocus"});
    const std::vector<std::string> expected = {
        "FindResourceW(library, 202, RT_DIALOG) = resource",
        R"(SetWindowTextW(dialog 1, "Formulaire") = TRUE)",
        "SetCursor(null) = wait cursor",
        "SHInitDialog({mask 0x1, dialog 1, flags 0x4}) = TRUE",
        "SHCreateMenuBar({size ok, parent dialog 1, flags 0x10, id 115, library}) = TRUE, bar 1",
        "SendMessageW(bar 1, TB_BUTTONCOUNT, 0x0, 0x0) = 2",
        "SendMessageW(bar 1, TB_GETBUTTON, 0) = 1, command 1",
        R"(SendMessageW(bar 1, TB_GETBUTTONINFOW, 1, {size ok, mask 0x22, room 255}) = 0, command 1, text "Done")",
        "SendMessageW(bar 1, TB_GETBUTTON, 1) = 1, command 2",
        R"(SendMessageW(bar 1, TB_GETBUTTONINFOW, 2, {size ok, mask 0x22, room 255}) = 1, command 2, text "Cancel")",
        R"(SendMessageW(bar 1, TB_SETBUTTONINFOW, 2, {size ok, mask 0x22, command 0, text "Annuler", length 7}) = 1)",
        "SendMessageW(bar 1, SHCMBM_OVERRIDEKEY, 27, 0x00030003) = 1",
        "SendMessageW(bar 1, SHCMBM_GETMENU, 0x0, 0x0) = menu 1",
        R"(SetMenuItemInfoW(menu 1, 1, TRUE, {size ok, mask 0x10, type 0x0, text "Annuler"}) = TRUE)",
        "SetFocus(null) = null"};
    calls.resize(std::min(calls.size(), expected.size()));
    EXPECT_EQ(expected, calls);
}

TEST_F(DialogOnDevice, InitFlagsAreTheDialogsOwn) {
    FormDialog dialog;
    dialog.initFlags = 0x21;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<std::string>{"SHInitDialog({mask 0x1, dialog 1, flags 0x21}) = TRUE"}),
              device.Calls({"SHInitDialog"}));
}

TEST_F(DialogOnDevice, WithMenuBarZeroHasNoBarNoOverrideAndNothingToSetTheTextOf) {
    FormDialog dialog;
    dialog.menuBarId = 0;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_TRUE(user.MenuBar().empty());
        EXPECT_EQ(nullptr, dialog.menuBarWindow);
        EXPECT_EQ(nullptr, dialog.commandMenu);
        dialog.SetMenuBarButtonText(IDOK, TEXT("Never"));
        user.Send(WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(noCalls, device.Calls({"SHCreateMenuBar", "SendMessageW"}));
}

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
    dialog.onNotify = [&](WPARAM wParam, LPARAM) { seen.push_back(wParam); };
    device.UseDialog([](DialogUser& user) {
        user.Notify(FORM_FIELD, 9);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<WPARAM>{FORM_FIELD}), seen);
}

TEST_F(DialogOnDevice, ResultOfOnMessageIsTheDialogProceduresOwn) {
    FormDialog dialog;
    dialog.onMessage = [](UINT message, WPARAM, LPARAM) -> INT_PTR {
        return message == WM_CTLCOLORSTATIC ? 42 : 0;
    };
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(42, user.Send(WM_CTLCOLORSTATIC, 0, 0)) << "this message's result is the procedure's";
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, WhoseMenuBarCannotBeMadeSaysSoAndIsDestroyed) {
    device.FailCall("SHCreateMenuBar", 1, ERROR_NOT_ENOUGH_MEMORY);
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog;
    bool isInitialised = false;
    dialog.onInit = [&] { isInitialised = true; };
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_FALSE(isInitialised);
    EXPECT_EQ(nullptr, dialog.window);
    ExpectBox(0, u"Failed to set up toolbar 115");
    EXPECT_EQ("dialog 1", device.MessageBoxes()[0].ownerName);
    ExpectBox(1, u"Dialog 202 failed: err=0x578");
}

TEST_F(DialogOnDevice, MenuBarOfResDllIsTakenFromThere) {
    const HINSTANCE resDll = device.AddModule(u"Res.dll");
    device.SetResources(resDll, ReadResourceFile(ORVANDE_TEST_RESOURCES));
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog;
    dialog.menuBarId = 5115;
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    ASSERT_EQ(1u, device.Calls({"SHCreateMenuBar"}).size());
    EXPECT_NE(std::string::npos, device.Calls({"SHCreateMenuBar"})[0].find("id 5115, Res.dll}) = FALSE"));
    ExpectBox(0, u"Failed to set up toolbar 5115");
}

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
        EXPECT_EQ(
            (std::vector<std::string>{
                R"(SendMessageW(bar 1, TB_SETBUTTONINFOW, 1, {size ok, mask 0x2, text "Send", length 0}) = 1)"}),
            device.Calls({"SendMessageW"}));
        EXPECT_EQ(u"Send", user.MenuBar()[0].text);
        EXPECT_EQ(IDOK, user.MenuBar()[0].command);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, OpenedFromADialogRunsUntilItIsClosedAndThenTheFirstGoesOn) {
    FormDialog outer;
    FormDialog inner;
    int innerResult = 0;
    outer.onCommand = [&](int id, HWND, int) {
        if (id == FORM_BUTTON) innerResult = inner.DoModal(outer.window);
    };
    device.UseDialog([&](DialogUser& user) {
        user.Type(FORM_FIELD, u"outer");
        user.Tap(FORM_BUTTON);
        EXPECT_EQ(u"outer", user.Text(FORM_FIELD));
        user.PressButton(IDOK);
    });
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(inner.window, user.Window());
        EXPECT_FALSE(IsWindowEnabled(outer.window));
        EXPECT_EQ(u"", user.Text(FORM_FIELD));
        Cancel(user);
    });
    EXPECT_EQ(IDOK, outer.DoModal(nullptr));
    EXPECT_EQ(IDCANCEL, innerResult);
}

TEST_F(DialogOnDevice, CanBeShownAgain) {
    FormDialog dialog;
    for (int time = 0; time < 3; ++time) {
        device.UseDialog(Cancel);
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }
}

TEST_F(DialogOnDevice, ShownAgainWithoutAMenuBarNoLongerKnowsTheOldOne) {
    FormDialog dialog;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    dialog.menuBarId = 0;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(nullptr, dialog.menuBarWindow);
        EXPECT_EQ(nullptr, dialog.commandMenu);
        dialog.SetMenuBarButtonText(IDOK, TEXT("Never"));
        user.Send(WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
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

TEST_F(DialogOnDevice, ObjectThatGoesWhileItsDialogIsOpenTakesTheDialogWithIt) {
    auto inner = std::make_unique<FormDialog>();
    device.UseDialog([&](DialogUser&) { inner.reset(); });
    inner->DoModal(nullptr);
    EXPECT_EQ(nullptr, inner);
    EXPECT_TRUE(device.MessageBoxes().empty());
}
