#include "DialogTest.h"

namespace {

class ModalDialogs : public DialogTest {
protected:
    /* A window of the application. */
    static HWND MakeWindow() {
        return CreateWindowExW(0, u"static", u"Application", WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                               nullptr, nullptr);
    }
};

}  // namespace

TEST_F(ModalDialogs, RunsUntilItIsEndedAndReturnsTheResult) {
    SampleDialog dialog;
    HWND window = nullptr;
    User([&](DialogUser& user) {
        window = user.Window();
        EXPECT_TRUE(IsWindow(window));
        EXPECT_EQ(u"All kinds", user.Caption());
        user.Send(WM_COMMAND, IDOK, 0);
        EXPECT_FALSE(user.IsOpen());
        EXPECT_TRUE(IsWindow(window)) << "it is destroyed after its loop";
    });
    EXPECT_EQ(IDOK, dialog.Run());
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(
        Lines{"DialogBoxIndirectParamW(library, template 100, null, procedure, parameter) = 1, dialog 1"},
        device.Calls({"DialogBoxIndirectParamW"}));
    EXPECT_EQ(Lines{"EndDialog(dialog 1, 1) = TRUE"}, device.Calls({"EndDialog"}));
}

TEST_F(ModalDialogs, AnyNumberIsAResult) {
    for (const INT_PTR result : {INT_PTR{0}, INT_PTR{-1}, INT_PTR{2000000000}}) {
        SampleDialog dialog;
        User([&](DialogUser& user) { EndDialog(user.Window(), result); });
        EXPECT_EQ(result, dialog.Run());
    }
}

TEST_F(ModalDialogs, LastResultBeforeTheLoopEndsCounts) {
    SampleDialog dialog;
    User([&](DialogUser& user) {
        EndDialog(user.Window(), 5);
        EndDialog(user.Window(), 6);
    });
    EXPECT_EQ(6, dialog.Run());
}

TEST_F(ModalDialogs, ShownDialogIsRecordedAsItWasAfterItsStart) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        SetDlgItemTextW(window, 1001, u"prefilled");
        SetDlgItemTextW(window, 1003, u"secret");
        return TRUE;
    });
    User([&](DialogUser& user) {
        EXPECT_EQ(1u, device.Dialogs().size());
        EXPECT_EQ(std::nullopt, device.Dialogs()[0].result);
        user.Type(1001, u"other");
        Cancel(user);
    });
    dialog.Run();
    ASSERT_EQ(1u, device.Dialogs().size());
    const ShownDialog& shown = device.Dialogs()[0];
    EXPECT_EQ(u"All kinds", shown.caption);
    EXPECT_EQ(INT_PTR{IDCANCEL}, shown.result);
    EXPECT_EQ("null", shown.ownerName);
    ASSERT_EQ(10u, shown.controls.size());
    EXPECT_EQ(u"Name", shown.controls[0].text);
    EXPECT_EQ(0xFFFF, shown.controls[0].id);
    EXPECT_EQ(u"prefilled", shown.controls[1].text);
    EXPECT_TRUE(shown.controls[1].hasFocus);
    EXPECT_EQ(u"******", shown.controls[3].text);
    EXPECT_TRUE(shown.controls[3].isPassword);
    EXPECT_EQ(66, shown.controls[1].place.left) << "44 dialog units";
    EXPECT_EQ(3, shown.controls[1].place.top) << "2 dialog units";
}

TEST_F(ModalDialogs, OwnerIsDisabledMeanwhile) {
    const HWND owner = MakeWindow();
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [&](HWND, WPARAM, LPARAM) {
        EXPECT_FALSE(IsWindowEnabled(owner));
        return TRUE;
    });
    User([&](DialogUser& user) {
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_EQ(owner, GetParent(user.Window()));
        EXPECT_EQ(owner, GetWindow(user.Window(), GW_OWNER));
        Cancel(user);
    });
    dialog.Run(100, owner);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ("window 1", device.Dialogs().at(0).ownerName);
    DestroyWindow(owner);
}

TEST_F(ModalDialogs, OwnerThatWasDisabledBeforeStaysSo) {
    const HWND owner = MakeWindow();
    EnableWindow(owner, FALSE);
    SampleDialog dialog;
    User(Cancel);
    dialog.Run(100, owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

TEST_F(ModalDialogs, ControlAsAnOwnerStandsForItsWindow) {
    const HWND window = MakeWindow();
    const HWND child =
        CreateWindowExW(0, u"edit", u"", WS_CHILD, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
    SampleDialog dialog;
    User([&](DialogUser& user) {
        EXPECT_EQ(window, GetParent(user.Window()));
        Cancel(user);
    });
    dialog.Run(100, child);
    DestroyWindow(window);
}

TEST_F(ModalDialogs, EndedInItsStartIsNotShownToTheUser) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        EndDialog(window, 77);
        return TRUE;
    });
    EXPECT_EQ(77, dialog.Run());
    EXPECT_EQ(0u, Count(dialog.messages, WM_PAINT));
    EXPECT_EQ(INT_PTR{77}, device.Dialogs().at(0).result);
}

TEST_F(ModalDialogs, DestroyedInItsStartIsAFailure) {
    const HWND owner = MakeWindow();
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        DestroyWindow(window);
        return FALSE;
    });
    EXPECT_EQ(-1, dialog.Run(100, owner));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_TRUE(device.Dialogs().empty());
    EXPECT_EQ(Lines{"DialogBoxIndirectParamW(library, template 100, window 1, procedure, parameter) = -1, "
                    "error 1400"},
              device.Calls({"DialogBoxIndirectParamW"}));
    DestroyWindow(owner);
}

TEST_F(ModalDialogs, DestroyedInsteadOfEndedGivesZero) {
    SampleDialog dialog;
    User([](DialogUser& user) { DestroyWindow(user.Window()); });
    EXPECT_EQ(0, dialog.Run());
}

TEST_F(ModalDialogs, OwnerThatIsGoneIsAViolation) {
    const HWND owner = MakeWindow();
    DestroyWindow(owner);
    SampleDialog dialog;
    EXPECT_EQ(-1, dialog.Run(100, owner));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(ModalDialogs, NestedDialogTakesTheNextScriptAndDisablesTheOuterOne) {
    SampleDialog outer;
    SampleDialog inner;
    std::string order;
    outer.On(WM_COMMAND, [&](HWND window, WPARAM wParam, LPARAM) {
        if (LOWORD(wParam) == 1016) {
            EXPECT_EQ(IDOK, inner.Run(101, window));
        }
        if (LOWORD(wParam) == IDCANCEL) EndDialog(window, IDCANCEL);
        return TRUE;
    });
    User([&](DialogUser& user) {
        user.Send(WM_COMMAND, 1016, 0);
        order += "outer ";
        EXPECT_TRUE(user.IsOpen());
        EXPECT_TRUE(IsWindowEnabled(user.Window()));
        EXPECT_EQ(1001, user.Focus()) << "the focus is back";
        Cancel(user);
    });
    User([&](DialogUser& user) {
        order += "inner ";
        EXPECT_EQ(u"Extended", user.Caption());
        EXPECT_FALSE(IsWindowEnabled(GetParent(user.Window())));
        user.Send(WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(IDCANCEL, outer.Run());
    EXPECT_EQ("inner outer ", order);
    ASSERT_EQ(2u, device.Dialogs().size());
    EXPECT_EQ(INT_PTR{IDCANCEL}, device.Dialogs()[0].result);
    EXPECT_EQ(INT_PTR{IDOK}, device.Dialogs()[1].result);
    EXPECT_EQ("dialog 1", device.Dialogs()[1].ownerName);
}

TEST_F(ModalDialogs, PostedMessagesComeBeforeTheUser) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        PostMessageW(window, WM_COMMAND, IDOK, 0);
        return TRUE;
    });
    EXPECT_EQ(IDOK, dialog.Run());
}

TEST_F(ModalDialogs, DialogWithoutAScriptIsCancelledWithAViolation) {
    SampleDialog dialog;
    EXPECT_EQ(IDCANCEL, dialog.Run());
    EXPECT_EQ(Lines{"the user has no script for dialog 1"}, TakeViolations());
}

TEST_F(ModalDialogs, ScriptThatLeavesItOpenIsFollowedByTheNext) {
    SampleDialog dialog;
    User([](DialogUser& user) { user.Type(1001, u"one"); });
    User([](DialogUser& user) {
        EXPECT_EQ(u"one", user.Text(1001));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.Run());
}

TEST_F(ModalDialogs, ScriptWithoutADialogIsAViolationAtTheEnd) {
    User(Cancel);
    device.EndTest();
    EXPECT_EQ(Lines{"1 scripts for dialogs that were not shown"}, TakeViolations());
}

TEST_F(ModalDialogs, EndDialogOfAnotherWindowIsRefused) {
    const HWND window = MakeWindow();
    EXPECT_FALSE(EndDialog(window, 1));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    EXPECT_FALSE(EndDialog(nullptr, 1));
    DestroyWindow(window);
}
