#include <stdexcept>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

[[noreturn]] void Throw() {
    throw std::runtime_error("an operation's own");
}

class DialogFailure : public ScreenTest {
protected:
    /* Runs the dialog, of which an operation throws once the user has done this. */
    void ExpectFailure(FormDialog& dialog, const DialogScript& script = nullptr) {
        if (script) device.UseDialog(script);
        ExpectMessage();
        EXPECT_EQ(-1, dialog.DoModal(nullptr));
        EXPECT_EQ(nullptr, dialog.window);
        ASSERT_EQ(1u, device.MessageBoxes().size());
        EXPECT_EQ(0u, device.MessageBoxes()[0].text.find(u"Dialog 202 failed: err=0x"));
    }
};

}  // namespace

TEST_F(DialogFailure, OnInitDialogThatThrowsEndsItWithMinusOne) {
    FormDialog dialog;
    dialog.onInit = Throw;
    ExpectFailure(dialog);
}

TEST_F(DialogFailure, OnDialogCommandThatThrowsEndsItWithMinusOne) {
    FormDialog dialog;
    dialog.onCommand = [](int id, HWND, int) {
        if (id == FORM_BUTTON) Throw();
    };
    ExpectFailure(dialog, [](DialogUser& user) { user.Tap(FORM_BUTTON); });
}

TEST_F(DialogFailure, OnDialogNotifyThatThrowsEndsItWithMinusOne) {
    FormDialog dialog;
    dialog.onNotify = [](WPARAM, LPARAM) { Throw(); };
    ExpectFailure(dialog, [](DialogUser& user) { user.Notify(FORM_FIELD, 1); });
}

TEST_F(DialogFailure, OnMessageThatThrowsEndsItWithMinusOne) {
    FormDialog dialog;
    dialog.onMessage = [](UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_APP) Throw();
        return 0;
    };
    ExpectFailure(dialog, [](DialogUser& user) { user.Send(WM_APP, 0, 0); });
}

TEST_F(DialogFailure, WindowHandlerThatThrowsEndsItWithMinusOne) {
    class Timed : public FormDialog {
        void OnTimer(WPARAM) override { Throw(); }
    } dialog;
    ExpectFailure(dialog, [](DialogUser& user) { user.Timer(1); });
}

TEST_F(DialogFailure, OnDestroyThatThrowsLeavesTheResultAndNoBinding) {
    FormDialog dialog;
    dialog.onDestroy = Throw;
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(nullptr, dialog.window);
}

TEST_F(DialogFailure, WindowThatDoesNotTakeABindingEndsItWithMinusOne) {
    for (const Failing failing : {Failing::Once, Failing::FromThereOn}) {
        for (const size_t call : {1u, 2u}) {
            FormDialog dialog;
            device.FailCall("SetWindowLongPtrW", call, ERROR_NOT_ENOUGH_MEMORY, failing);
            ExpectMessage();
            EXPECT_EQ(-1, dialog.DoModal(nullptr)) << call;
            EXPECT_EQ(nullptr, dialog.window);
            device.StopFailing();
        }
    }
    EXPECT_EQ(1u + 1u + 1u + 2u, device.FailedCalls());
}

TEST_F(DialogFailure, WindowThatDoesNotGiveABindingUpPassesItsLastMessagesOn) {
    for (const Failing failing : {Failing::Once, Failing::FromThereOn}) {
        for (const size_t call : {3u, 4u}) {
            FormDialog dialog;
            device.FailCall("SetWindowLongPtrW", call, ERROR_NOT_ENOUGH_MEMORY, failing);
            device.UseDialog(Cancel);
            EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr)) << call;
            EXPECT_EQ(nullptr, dialog.window);
            device.StopFailing();
            device.UseDialog(Cancel);
            EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr)) << "shown again";
        }
    }
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(DialogFailure, DialogThatThrowsInADialogEndsOnlyItself) {
    FormDialog outer;
    FormDialog inner;
    inner.onInit = Throw;
    outer.onCommand = [&](int id, HWND, int) {
        if (id == FORM_BUTTON) {
            EXPECT_EQ(-1, inner.DoModal(outer.window));
        }
    };
    device.UseDialog([&](DialogUser& user) {
        ExpectMessage();
        user.Tap(FORM_BUTTON);
        EXPECT_TRUE(user.IsOpen());
        user.PressButton(IDOK);
    });
    EXPECT_EQ(IDOK, outer.DoModal(nullptr));
}

TEST_F(DialogFailure, DialogThatCannotBeBoundLeavesTheFocusAlone) {
    FormDialog dialog;
    // Memory runs out for what the library calls, not for what the user does.
    dialog.onInit = [&] {
        FormDialog unbound;
        const auto object = reinterpret_cast<LPARAM>(static_cast<Dialog*>(&unbound));
        const auto proc = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog.window, DWLP_DLGPROC));
        const HWND control = GetDlgItem(dialog.window, FORM_FIELD);
        AllocationWatch watch(1);
        const INT_PTR result = proc(control, WM_INITDIALOG, 0, object);
        watch.Stop();
        EXPECT_TRUE(watch.Failed());
        EXPECT_EQ(FALSE, result);
        EXPECT_EQ(nullptr, unbound.window);
    };
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(DialogFailure, EveryCallThatFailsOnTheWayLeavesTheDialogUsableOrTold) {
    for (const char* function :
         {"FindResourceW", "LoadResource", "DialogBoxIndirectParamW", "GetWindowTextW", "SetWindowTextW",
          "GetWindow", "SetCursor", "SHInitDialog", "GetMenuItemInfoW", "SetMenuItemInfoW", "GetSubMenu"}) {
        SCOPED_TRACE(function);
        Translate("A form\tUn formulaire\nName\tNom\nDone\tFini\nCancel\tAnnuler\n");
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        const std::string_view name = function;
        const bool isShown =
            name != "FindResourceW" && name != "LoadResource" && name != "DialogBoxIndirectParamW";
        if (isShown)
            device.UseDialog([](DialogUser& user) { user.PressButton(IDOK); });
        else
            ExpectMessage();
        FormDialog dialog;
        EXPECT_EQ(isShown ? IDOK : -1, dialog.DoModal(nullptr));
        device.StopFailing();
    }
}
