#include "DialogTest.h"

#include <algorithm>

namespace {

class Dialogs : public DialogTest {
protected:
    /* A window of the application. */
    static HWND MakeWindow() {
        return CreateWindowExW(0, u"static", u"Application", WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                               nullptr, nullptr);
    }

    static size_t Count(const std::vector<UINT>& messages, UINT message) {
        return static_cast<size_t>(std::count(messages.begin(), messages.end(), message));
    }
};

/* The messages that a subclassed window gets, and the procedure that it had before. */
std::vector<UINT> subclassMessages;
WNDPROC subclassPrevious = nullptr;

LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    subclassMessages.push_back(message);
    return CallWindowProcW(subclassPrevious, window, message, wParam, lParam);
}

}  // namespace

TEST_F(Dialogs, RunsUntilItIsEndedAndReturnsTheResult) {
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

TEST_F(Dialogs, AnyNumberIsAResult) {
    for (const INT_PTR result : {INT_PTR{0}, INT_PTR{-1}, INT_PTR{2000000000}}) {
        SampleDialog dialog;
        User([&](DialogUser& user) { EndDialog(user.Window(), result); });
        EXPECT_EQ(result, dialog.Run());
    }
}

TEST_F(Dialogs, LastResultBeforeTheLoopEndsCounts) {
    SampleDialog dialog;
    User([&](DialogUser& user) {
        EndDialog(user.Window(), 5);
        EndDialog(user.Window(), 6);
    });
    EXPECT_EQ(6, dialog.Run());
}

TEST_F(Dialogs, ProcedureGetsTheFontThenTheParameterAndAtLastItsDestruction) {
    SampleDialog dialog;
    std::vector<UINT> beforeParameter;
    dialog.On(WM_INITDIALOG, [&](HWND window, WPARAM first, LPARAM) {
        EXPECT_EQ(GetDlgItem(window, 1001), reinterpret_cast<HWND>(first));
        return TRUE;
    });
    User(Cancel);
    dialog.Run();
    ASSERT_FALSE(dialog.messages.empty());
    EXPECT_EQ(UINT{WM_INITDIALOG}, dialog.messages.front());
    EXPECT_EQ(0u, Count(dialog.messages, WM_NCCREATE));
    EXPECT_EQ(0u, Count(dialog.messages, WM_CREATE));
    EXPECT_EQ(1u, Count(dialog.messages, WM_PAINT));
    EXPECT_EQ(1u, Count(dialog.messages, WM_DESTROY));
    EXPECT_EQ(UINT{WM_NCDESTROY}, dialog.messages.back());
}

TEST_F(Dialogs, ShownDialogIsRecordedAsItWasAfterItsStart) {
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

TEST_F(Dialogs, FocusGoesToTheFirstTabStopWhenTheProcedureSaysSo) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        EnableWindow(GetDlgItem(window, 1001), FALSE);
        return TRUE;
    });
    User([](DialogUser& user) {
        EXPECT_EQ(1003, user.Focus()) << "the first one that is enabled after the start";
        Cancel(user);
    });
    dialog.Run();
}

TEST_F(Dialogs, FocusStaysWhereTheProcedurePutIt) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        SetFocus(GetDlgItem(window, 1003));
        return FALSE;
    });
    User([](DialogUser& user) {
        EXPECT_EQ(1003, user.Focus());
        Cancel(user);
    });
    dialog.Run();
}

TEST_F(Dialogs, WithoutATabStopNothingHasTheFocus) {
    SampleDialog dialog;
    User([](DialogUser& user) {
        EXPECT_EQ(std::nullopt, user.Focus());
        Cancel(user);
    });
    dialog.Run(102);
}

TEST_F(Dialogs, OwnerIsDisabledMeanwhile) {
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

TEST_F(Dialogs, OwnerThatWasDisabledBeforeStaysSo) {
    const HWND owner = MakeWindow();
    EnableWindow(owner, FALSE);
    SampleDialog dialog;
    User(Cancel);
    dialog.Run(100, owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

TEST_F(Dialogs, ControlAsAnOwnerStandsForItsWindow) {
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

TEST_F(Dialogs, EndedInItsStartIsNotShownToTheUser) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        EndDialog(window, 77);
        return TRUE;
    });
    EXPECT_EQ(77, dialog.Run());
    EXPECT_EQ(0u, Count(dialog.messages, WM_PAINT));
    EXPECT_EQ(INT_PTR{77}, device.Dialogs().at(0).result);
}

TEST_F(Dialogs, DestroyedInItsStartIsAFailure) {
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

TEST_F(Dialogs, DestroyedInsteadOfEndedGivesZero) {
    SampleDialog dialog;
    User([](DialogUser& user) { DestroyWindow(user.Window()); });
    EXPECT_EQ(0, dialog.Run());
}

TEST_F(Dialogs, NoTemplateFailsAndKeepsTheError) {
    SampleDialog dialog;
    EXPECT_EQ(-1, dialog.Run(999));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, GetLastError());
}

TEST_F(Dialogs, UnknownClassOfAControlFailsUnlessTheTemplateForgivesIt) {
    SampleDialog dialog;
    EXPECT_EQ(-1, dialog.Run(103));
    EXPECT_EQ(DWORD{ERROR_CANNOT_FIND_WND_CLASS}, GetLastError());
    EXPECT_EQ(-1, dialog.Run(105)) << "a class of the dialog's own";
    User([](DialogUser& user) {
        EXPECT_EQ(std::vector<std::u16string>{u"Rest"}, user.Statics());
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.Run(104));
}

TEST_F(Dialogs, MemoryThatIsNoResourceIsNoTemplate) {
    const DLGTEMPLATE own{};
    EXPECT_EQ(-1, DialogBoxIndirectParamW(nullptr, &own, nullptr, nullptr, 0));
    EXPECT_EQ(
        Lines{"DialogBoxIndirectParamW(null, template unknown, null, null, 0): the template is no loaded "
              "resource"},
        TakeViolations());
}

TEST_F(Dialogs, OwnerThatIsGoneIsAViolation) {
    const HWND owner = MakeWindow();
    DestroyWindow(owner);
    SampleDialog dialog;
    EXPECT_EQ(-1, dialog.Run(100, owner));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(Dialogs, NestedDialogTakesTheNextScriptAndDisablesTheOuterOne) {
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

TEST_F(Dialogs, ResultOfAMessageIsTheProceduresOrItsMessageResult) {
    SampleDialog dialog;
    dialog.On(WM_APP, [](HWND window, WPARAM, LPARAM) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, 1234);
        return TRUE;
    });
    dialog.On(WM_APP + 1, [](HWND, WPARAM, LPARAM) { return TRUE; });
    dialog.On(WM_CTLCOLORSTATIC, [](HWND, WPARAM, LPARAM) { return 55; });
    User([](DialogUser& user) {
        EXPECT_EQ(1234, user.Send(WM_APP, 0, 0));
        EXPECT_EQ(0, user.Send(WM_APP + 1, 0, 0)) << "the result of the message before is forgotten";
        EXPECT_EQ(55, user.Send(WM_CTLCOLORSTATIC, 0, 0));
        EXPECT_EQ(0, user.Send(WM_APP + 2, 0, 0));
        Cancel(user);
    });
    dialog.Run();
}

TEST_F(Dialogs, ClosingIsCancelling) {
    SampleDialog dialog;
    User([](DialogUser& user) { user.Send(WM_CLOSE, 0, 0); });
    EXPECT_EQ(IDCANCEL, dialog.Run());
}

TEST_F(Dialogs, PostedMessagesComeBeforeTheUser) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        PostMessageW(window, WM_COMMAND, IDOK, 0);
        return TRUE;
    });
    EXPECT_EQ(IDOK, dialog.Run());
}

TEST_F(Dialogs, SubclassedDialogSeesItsMessagesFirst) {
    SampleDialog dialog;
    subclassMessages.clear();
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        subclassPrevious = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Subclass)));
        EXPECT_TRUE(subclassPrevious == DefDlgProcW);
        return TRUE;
    });
    User([](DialogUser& user) { user.Send(WM_COMMAND, IDOK, 0); });
    EXPECT_EQ(IDOK, dialog.Run());
    EXPECT_EQ(0u, Count(subclassMessages, WM_INITDIALOG)) << "it was on its way already";
    EXPECT_EQ(1u, Count(subclassMessages, WM_DESTROY));
    EXPECT_EQ(1u, Count(subclassMessages, WM_NCDESTROY));
    const Lines commands = device.Calls({"CallWindowProcW"});
    EXPECT_NE(commands.end(),
              std::find(commands.begin(), commands.end(),
                        "CallWindowProcW(dialog procedure, dialog 1, WM_COMMAND, 0x1, null) = 0"));
}

TEST_F(Dialogs, ExceptionThatLeavesAProcedureIsAViolation) {
    SampleDialog dialog;
    dialog.On(WM_APP, [](HWND, WPARAM, LPARAM) -> INT_PTR { throw std::out_of_range("mistake"); });
    User([](DialogUser& user) {
        EXPECT_EQ(0, user.Send(WM_APP, 0, 0));
        Cancel(user);
    });
    dialog.Run();
    EXPECT_EQ(Lines{"an exception leaves a procedure of dialog 1"}, TakeViolations());
}

TEST_F(Dialogs, DialogWithoutAScriptIsCancelledWithAViolation) {
    SampleDialog dialog;
    EXPECT_EQ(IDCANCEL, dialog.Run());
    EXPECT_EQ(Lines{"the user has no script for dialog 1"}, TakeViolations());
}

TEST_F(Dialogs, ScriptThatLeavesItOpenIsFollowedByTheNext) {
    SampleDialog dialog;
    User([](DialogUser& user) { user.Type(1001, u"one"); });
    User([](DialogUser& user) {
        EXPECT_EQ(u"one", user.Text(1001));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.Run());
}

TEST_F(Dialogs, ScriptWithoutADialogIsAViolationAtTheEnd) {
    User(Cancel);
    device.EndTest();
    EXPECT_EQ(Lines{"1 scripts for dialogs that were not shown"}, TakeViolations());
}

TEST_F(Dialogs, EndDialogOfAnotherWindowIsRefused) {
    const HWND window = MakeWindow();
    EXPECT_FALSE(EndDialog(window, 1));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    EXPECT_FALSE(EndDialog(nullptr, 1));
    DestroyWindow(window);
}
