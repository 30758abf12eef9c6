#include <algorithm>

#include "DialogTest.h"

namespace {

class Dialogs : public DialogTest {};

/* The messages that a subclassed window gets, and the procedure that it had before. */
std::vector<UINT> subclassMessages;
WNDPROC subclassPrevious = nullptr;

LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    subclassMessages.push_back(message);
    return CallWindowProcW(subclassPrevious, window, message, wParam, lParam);
}

}  // namespace

TEST_F(Dialogs, ProcedureGetsTheFontThenTheParameterAndAtLastItsDestruction) {
    SampleDialog dialog;
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
