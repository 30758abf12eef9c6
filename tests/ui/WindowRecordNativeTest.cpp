/* Whose the record of a binding is, and when it is freed, where the window takes or gives less than it is
 * asked for. */
#include "ui/BindingFixture.h"

namespace {

LRESULT CALLBACK OtherProc(HWND /*window*/, UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return 77;
}

class WindowRecord : public Binding {
protected:
    /* As WithControl, in the dialog itself: what its user does is not counted as memory. */
    void InDialog(const std::function<void(HWND control)>& operation) {
        FormDialog dialog;
        dialog.onInit = [&] { operation(GetDlgItem(dialog.window, FORM_FIELD)); };
        device.UseDialog(Cancel);
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }

    /* The binding whose memory is looked at. */
    static bool Attach(HWND control, Window& object) {
        const AllocationWatch watch;
        return windowBindings.AttachWindow(control, &object);
    }

    /* Binds an object of its own to the control and does this with it. The control is left as it was; the one
     * record that was made must not be freed before the object, and must be with it. */
    void ExpectKeptByItsObject(const std::function<void(HWND control, Window& object)>& operation) {
        InDialog([&](HWND control) {
            const WNDPROC before = ProcOf(control);
            SetProc(control, OtherProc);
            {
                Window object;
                operation(control, object);
                EXPECT_EQ(1u, AllocationWatch::BlocksLeft());
                SetChain(control, nullptr);
                SetProc(control, before);
            }
            EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
        });
    }

    void FailSetting(size_t call, Failing failing = Failing::Once) {
        device.FailCall("SetWindowLongPtrW", call, ERROR_NOT_ENOUGH_MEMORY, failing);
    }
};

}  // namespace

TEST_F(WindowRecord, IsFreedAtOnceWhereTheWindowDoesNotTakeItOrTheProcedure) {
    for (const size_t call : {1u, 2u}) {
        InDialog([&](HWND control) {
            const WNDPROC before = ProcOf(control);
            FailSetting(call);
            EXPECT_FALSE(Attach(control, first)) << call;
            EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
            EXPECT_EQ(before, ProcOf(control));
            EXPECT_EQ(nullptr, ChainOf(control));
        });
    }
}

TEST_F(WindowRecord, IsTheObjectsWhereTheWindowTakesItAndDoesNotGiveItBack) {
    ExpectKeptByItsObject([this](HWND control, Window& object) {
        FailSetting(2, Failing::FromThereOn);
        EXPECT_FALSE(Attach(control, object));
        device.StopFailing();
        ASSERT_NE(nullptr, ChainOf(control));
        EXPECT_EQ(nullptr, ChainOf(control)->key) << "nobody's binding any more";
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
    });
}

TEST_F(WindowRecord, StaysWhereTheWindowDoesNotGiveTheProcedureUp) {
    InDialog([this](HWND control) {
        EXPECT_TRUE(Attach(control, first));
        FailSetting(1);
        EXPECT_FALSE(windowBindings.DetachWindow(control));
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control));
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
    });
}

TEST_F(WindowRecord, IsTheObjectsWhereTheWindowIsUnboundButKeepsTheChain) {
    ExpectKeptByItsObject([this](HWND control, Window& object) {
        EXPECT_TRUE(Attach(control, object));
        FailSetting(2);
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_NE(nullptr, ChainOf(control));
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
    });
}

TEST_F(WindowRecord, IsTheObjectsOnceAWindowThatEndsCannotBeUnbound) {
    ExpectKeptByItsObject([this](HWND control, Window& object) {
        EXPECT_TRUE(Attach(control, object));
        FailSetting(1, Failing::FromThereOn);
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(77, windowBindings.CallPreviousProc(control, WM_DESTROY, 0, 0)) << "kept once";
        device.StopFailing();
        EXPECT_EQ(&object, windowBindings.FindWindowObject(control));
    });
}

TEST_F(WindowRecord, ThatIsKeptStaysSoWhenAnotherOfItsObjectIsTakenOut) {
    ExpectKeptByItsObject([this](HWND control, Window& object) {
        EXPECT_TRUE(Attach(control, object));
        FailSetting(1);
        windowBindings.CallPreviousProc(control, WM_DESTROY, 0, 0);
        const HWND other = GetDlgItem(GetParent(control), FORM_BUTTON);
        EXPECT_TRUE(windowBindings.AttachWindow(other, &object));
        EXPECT_TRUE(windowBindings.DetachWindow(other));
    });
}

TEST_F(WindowRecord, ThatIsKeptIsFreedWithItsWindowWhenThatCanBeUnboundAfterAll) {
    InDialog([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        SetProc(control, OtherProc);
        {
            Window object;
            EXPECT_TRUE(Attach(control, object));
            FailSetting(1);
            windowBindings.CallPreviousProc(control, WM_DESTROY, 0, 0);
            EXPECT_TRUE(windowBindings.DetachWindow(control));
            EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
        }
        SetProc(control, before);
    });
}
