#include "ui/WindowBinding.h"

#include <vector>

#include "ui/BindingFixture.h"

namespace {

LRESULT CALLBACK ForeignProc(HWND /*window*/, UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return 77;
}

constexpr LRESULT unbound = 5;

/* Tells whether the window is still bound when it sees a message. */
LRESULT CALLBACK LookingProc(HWND window, UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    return windowBindings.FindWindowObject(window) == nullptr ? unbound : 0;
}

}  // namespace

TEST_F(Binding, MakesARecordAndInstallsTheProcedure) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        EXPECT_TRUE(windowBindings.AttachWindow(control, &first));
        EXPECT_EQ(&Window::wndProc, ProcOf(control));
        const WindowHookRecord* const record = ChainOf(control);
        ASSERT_NE(nullptr, record);
        EXPECT_EQ(&Window::wndProc, record->key);
        EXPECT_EQ(before, record->previousProc);
        EXPECT_EQ(&first, record->object);
        EXPECT_EQ(nullptr, record->next);
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control));

        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(before, ProcOf(control));
        EXPECT_EQ(nullptr, ChainOf(control));
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
    });
}

TEST_F(Binding, SecondAttachMakesNoRecordAndOnlyReplacesTheObject) {
    WithControl([this](HWND control) {
        EXPECT_TRUE(windowBindings.AttachWindow(control, &first));
        const WindowHookRecord* const record = ChainOf(control);
        EXPECT_FALSE(windowBindings.AttachWindow(control, &second));
        EXPECT_EQ(record, ChainOf(control));
        EXPECT_EQ(nullptr, record->next);
        EXPECT_EQ(&second, windowBindings.FindWindowObject(control));
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_FALSE(windowBindings.DetachWindow(control));
    });
}

TEST_F(Binding, ProcedureThatIsInstalledWithoutARecordIsLeftAsItIs) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        SetProc(control, Window::wndProc);
        EXPECT_FALSE(windowBindings.AttachWindow(control, &first));
        EXPECT_EQ(nullptr, ChainOf(control));
        SetProc(control, before);
    });
}

TEST_F(Binding, WithoutMemoryTheUserDataIsClearedNothingInstalledAndTheResultTrue) {
    FormDialog dialog;
    // Memory runs out for what the library calls, not for what the user does.
    dialog.onInit = [&] {
        const HWND control = GetDlgItem(dialog.window, FORM_FIELD);
        const WNDPROC before = ProcOf(control);
        WindowHookRecord foreign{ForeignProc, before, &second, nullptr};
        SetChain(control, &foreign);
        SetLastError(ERROR_SUCCESS);
        AllocationWatch watch(1);
        const bool attached = windowBindings.AttachWindow(control, &first);
        watch.Stop();
        EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, GetLastError());
        EXPECT_TRUE(watch.Failed());
        EXPECT_TRUE(attached);
        EXPECT_EQ(nullptr, ChainOf(control));
        EXPECT_EQ(before, ProcOf(control));
    };
    device.UseDialog(Cancel);
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(Binding, WindowThatDoesNotExistIsNotBound) {
    EXPECT_FALSE(windowBindings.AttachWindow(nullptr, &first));
    EXPECT_EQ(0u, device.CountCalls("SetWindowLongPtrW"));
    EXPECT_EQ(nullptr, windowBindings.FindWindowObject(nullptr));
    EXPECT_FALSE(windowBindings.DetachWindow(nullptr));
    EXPECT_EQ(0, windowBindings.CallPreviousProc(nullptr, WM_APP, 0, 0));
}

TEST_F(Binding, RecordIsPutInFrontOfThoseOfOthersAndTakenOutAgain) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        WindowHookRecord foreign{ForeignProc, before, &second, nullptr};
        SetChain(control, &foreign);
        SetProc(control, ForeignProc);
        EXPECT_TRUE(windowBindings.AttachWindow(control, &first));
        EXPECT_EQ(&foreign, ChainOf(control)->next);
        EXPECT_EQ(&ForeignProc, ChainOf(control)->previousProc);
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control));
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(&foreign, ChainOf(control));
        EXPECT_EQ(&ForeignProc, ProcOf(control));
        SetChain(control, nullptr);
        SetProc(control, before);
    });
}

TEST_F(Binding, BehindARecordThatWasPutOnTopOfItIsUnlinkedThere) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        windowBindings.AttachWindow(control, &first);
        WindowHookRecord foreign{ForeignProc, Window::wndProc, &second, ChainOf(control)};
        SetChain(control, &foreign);
        SetProc(control, ForeignProc);
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control));
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(&foreign, ChainOf(control));
        EXPECT_EQ(&ForeignProc, ProcOf(control));
        EXPECT_EQ(nullptr, foreign.next);
        EXPECT_EQ(before, foreign.previousProc);
        SetChain(control, nullptr);
        SetProc(control, before);
    });
}

TEST_F(Binding, BehindARecordThatWasNotPutDirectlyOnTopOfItStays) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        windowBindings.AttachWindow(control, &first);
        WindowHookRecord* const own = ChainOf(control);
        WindowHookRecord foreign{ForeignProc, before, &second, own};
        SetChain(control, &foreign);
        EXPECT_FALSE(windowBindings.DetachWindow(control));
        EXPECT_EQ(own, foreign.next);
        EXPECT_EQ(before, foreign.previousProc);
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control));
        SetChain(control, own);
        EXPECT_TRUE(windowBindings.DetachWindow(control));
    });
}

TEST_F(Binding, RecordAtTheThousandthPlaceIsFoundTheNextIsNot) {
    WithControl([this](HWND control) {
        WindowHookRecord own{Window::wndProc, ForeignProc, &first, nullptr};
        std::vector<WindowHookRecord> chain(1000, {ForeignProc, ForeignProc, &second, nullptr});
        for (size_t i = 0; i + 1 < chain.size(); ++i)
            chain[i].next = &chain[i + 1];
        chain[999].next = &own;
        SetChain(control, &chain[1]);
        EXPECT_EQ(&first, windowBindings.FindWindowObject(control)) << "999 others are in front of it";
        SetChain(control, &chain[0]);
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control)) << "1000 others are in front of it";
        EXPECT_FALSE(windowBindings.DetachWindow(control));
        EXPECT_EQ(0, windowBindings.CallPreviousProc(control, WM_APP, 0, 0));
        SetChain(control, nullptr);
    });
}

TEST_F(Binding, ChainThatBitesItsTailDoesNotHang) {
    WithControl([this](HWND control) {
        WindowHookRecord foreign{ForeignProc, ForeignProc, &second, nullptr};
        foreign.next = &foreign;
        SetChain(control, &foreign);
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
        SetChain(control, nullptr);
    });
}

TEST_F(Binding, MessagesGoOnToThePreviousProcedure) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        SetProc(control, ForeignProc);
        windowBindings.AttachWindow(control, &first);
        EXPECT_EQ(77, windowBindings.CallPreviousProc(control, WM_APP, 1, 2));
        windowBindings.DetachWindow(control);
        EXPECT_EQ(0, windowBindings.CallPreviousProc(control, WM_APP, 1, 2));
        SetProc(control, before);
    });
}

TEST_F(Binding, WithWmDestroyTheWindowIsUnboundBeforeThePreviousProcedureSeesIt) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        SetProc(control, LookingProc);
        windowBindings.AttachWindow(control, &first);
        EXPECT_EQ(unbound, windowBindings.CallPreviousProc(control, WM_DESTROY, 0, 0));
        EXPECT_EQ(&LookingProc, ProcOf(control));
        SetProc(control, before);
    });
}

TEST_F(Binding, WithoutAnObjectTheWindowIsBoundAndUnboundAllTheSame) {
    WithControl([](HWND control) {
        const WNDPROC before = ProcOf(control);
        EXPECT_TRUE(windowBindings.AttachWindow(control, nullptr));
        EXPECT_EQ(&Window::wndProc, ProcOf(control));
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(before, ProcOf(control));
    });
}

TEST_F(Binding, WithoutAnObjectWhatTheWindowKeepsIsNobodysAndPassesMessagesOn) {
    WithControl([this](HWND control) {
        const WNDPROC before = ProcOf(control);
        SetProc(control, ForeignProc);
        EXPECT_TRUE(windowBindings.AttachWindow(control, nullptr));
        const std::unique_ptr<WindowHookRecord> own(ChainOf(control));
        device.FailCall("SetWindowLongPtrW", 1, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_EQ(77, windowBindings.CallPreviousProc(control, WM_DESTROY, 0, 0));
        EXPECT_EQ(own.get(), ChainOf(control)) << "the procedure is not taken";
        device.FailCall("SetWindowLongPtrW", 2, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_TRUE(windowBindings.DetachWindow(control));
        EXPECT_EQ(own.get(), ChainOf(control)) << "the procedure is taken, the chain is not";
        EXPECT_EQ(nullptr, own->key);
        SetChain(control, nullptr);
        SetProc(control, before);
    });
}
