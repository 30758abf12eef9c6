/* Bindings of real windows to objects. */
#include <array>
#include <memory>

#include "helpers/DialogTest.h"
#include "ui/Window.h"

namespace {

WNDPROC ProcOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

WindowHookRecord* ChainOf(HWND window) {
    return reinterpret_cast<WindowHookRecord*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void SetProc(HWND window, WNDPROC proc) {
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
}

void SetChain(HWND window, WindowHookRecord* head) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(head));
}

/* A procedure of somebody else, whose record lies in front of the library's. */
LRESULT CALLBACK ForeignProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) return 77;
    return Window::wndProc(window, message, wParam, lParam);
}

/* Notes whether the window is bound when WM_DESTROY comes, which is behind the binding. */
WNDPROC systemProc = nullptr;
bool destroyed = false;
bool boundAtItsEnd = false;
WNDPROC procAtItsEnd = nullptr;

LRESULT CALLBACK NotingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        destroyed = true;
        boundAtItsEnd = windowBindings.FindWindowObject(window) != nullptr;
        procAtItsEnd = ProcOf(window);
    }
    return CallWindowProcW(systemProc, window, message, wParam, lParam);
}

class Bindings : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        window = CreateWindowExW(0, L"STATIC", L"bound", 0, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(nullptr, window);
        before = ProcOf(window);
    }

    void TearDown() override {
        if (IsWindow(window)) DestroyWindow(window);
        DialogTest::TearDown();
    }

    HWND window = nullptr;
    WNDPROC before = nullptr;
    Window first;
    Window second;
};

}  // namespace

TEST_F(Bindings, AreMadeAndUndone) {
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    EXPECT_EQ(&Window::wndProc, ProcOf(window));
    const WindowHookRecord* const record = ChainOf(window);
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(&Window::wndProc, record->key);
    EXPECT_EQ(before, record->previousProc);
    EXPECT_EQ(&first, record->object);
    EXPECT_EQ(nullptr, record->next);
    EXPECT_EQ(&first, windowBindings.FindWindowObject(window));
    EXPECT_TRUE(windowBindings.DetachWindow(window));
    EXPECT_EQ(before, ProcOf(window));
    EXPECT_EQ(nullptr, ChainOf(window));
    EXPECT_EQ(nullptr, windowBindings.FindWindowObject(window));
    EXPECT_FALSE(windowBindings.DetachWindow(window));
}

TEST_F(Bindings, SecondAttachOnlyReplacesTheObject) {
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    const WindowHookRecord* const record = ChainOf(window);
    EXPECT_FALSE(windowBindings.AttachWindow(window, &second));
    EXPECT_EQ(record, ChainOf(window));
    EXPECT_EQ(nullptr, record->next);
    EXPECT_EQ(&second, windowBindings.FindWindowObject(window));
    EXPECT_TRUE(windowBindings.DetachWindow(window));
}

TEST_F(Bindings, ProcedureWithoutARecordIsLeftAlone) {
    SetProc(window, Window::wndProc);
    EXPECT_FALSE(windowBindings.AttachWindow(window, &first));
    EXPECT_EQ(nullptr, ChainOf(window));
    SetProc(window, before);
}

TEST_F(Bindings, ForeignRecordsStayBehindTheLibrarys) {
    WindowHookRecord foreign{ForeignProc, before, nullptr, nullptr};
    SetChain(window, &foreign);
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    EXPECT_EQ(&foreign, ChainOf(window)->next);
    EXPECT_EQ(&first, windowBindings.FindWindowObject(window));
    EXPECT_TRUE(windowBindings.DetachWindow(window));
    EXPECT_EQ(&foreign, ChainOf(window));
    EXPECT_EQ(before, ProcOf(window));
}

TEST_F(Bindings, RecordBehindOneChainedOnTopOfItIsUnlinked) {
    first.window = window;
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    WindowHookRecord foreign{ForeignProc, Window::wndProc, nullptr, ChainOf(window)};
    SetChain(window, &foreign);
    SetProc(window, ForeignProc);
    EXPECT_EQ(77, SendMessageW(window, WM_APP, 0, 0));
    EXPECT_EQ(L"bound", TextOf(window));
    EXPECT_TRUE(windowBindings.DetachWindow(window));
    EXPECT_EQ(&foreign, ChainOf(window));
    EXPECT_EQ(nullptr, foreign.next);
    EXPECT_EQ(before, foreign.previousProc);
    EXPECT_EQ(&ForeignProc, ProcOf(window));
    SetProc(window, before);
}

TEST_F(Bindings, RecordBehindOneThatIsChainedOtherwiseStays) {
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    WindowHookRecord* const own = ChainOf(window);
    WindowHookRecord foreign{ForeignProc, before, nullptr, own};
    SetChain(window, &foreign);
    EXPECT_FALSE(windowBindings.DetachWindow(window));
    EXPECT_EQ(own, foreign.next);
    EXPECT_EQ(before, foreign.previousProc);
    EXPECT_EQ(&first, windowBindings.FindWindowObject(window));
    SetChain(window, own);
    EXPECT_TRUE(windowBindings.DetachWindow(window));
}

TEST_F(Bindings, WalkFindsTheThousandthRecordAndNoLaterOne) {
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    WindowHookRecord* const own = ChainOf(window);
    auto foreign = std::make_unique<std::array<WindowHookRecord, 1000>>();
    for (size_t i = 0; i < foreign->size(); ++i)
        (*foreign)[i] = {ForeignProc, before, nullptr, i + 1 < foreign->size() ? &(*foreign)[i + 1] : own};
    SetChain(window, &(*foreign)[1]);
    EXPECT_EQ(&first, windowBindings.FindWindowObject(window));
    SetChain(window, foreign->data());
    EXPECT_EQ(nullptr, windowBindings.FindWindowObject(window));
    EXPECT_FALSE(windowBindings.DetachWindow(window));
    EXPECT_EQ(0, windowBindings.CallPreviousProc(window, WM_GETTEXTLENGTH, 0, 0));
    SetChain(window, own);
    EXPECT_EQ(5, windowBindings.CallPreviousProc(window, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_TRUE(windowBindings.DetachWindow(window));
}

TEST_F(Bindings, DamagedChainThatRunsInACircleEndsTheWalk) {
    WindowHookRecord foreign{ForeignProc, before, nullptr, nullptr};
    foreign.next = &foreign;
    SetChain(window, &foreign);
    EXPECT_EQ(nullptr, windowBindings.FindWindowObject(window));
    SetChain(window, nullptr);
}

TEST_F(Bindings, AreUndoneBeforeThePreviousProcedureSeesTheEnd) {
    destroyed = false;
    systemProc = before;
    SetProc(window, NotingProc);
    first.window = window;
    EXPECT_TRUE(windowBindings.AttachWindow(window, &first));
    DestroyWindow(window);
    EXPECT_TRUE(destroyed);
    EXPECT_FALSE(boundAtItsEnd);
    EXPECT_EQ(&NotingProc, procAtItsEnd);
    EXPECT_EQ(nullptr, first.window);
}

TEST_F(Bindings, ObjectTakesItsLiveWindowAlong) {
    {
        Window object;
        object.window = window;
        EXPECT_TRUE(windowBindings.AttachWindow(window, &object));
    }
    EXPECT_FALSE(IsWindow(window));
}
