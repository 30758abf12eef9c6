#include "DialogTest.h"

namespace {

/* What reaches the windows of a test: "name of the window: message". */
std::vector<std::pair<HWND, UINT>> received;

LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    received.emplace_back(window, message);
    return DefWindowProcW(window, message, wParam, lParam);
}

class Windows : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        received.clear();
        window = Make(u"Top", nullptr);
    }

    void TearDown() override {
        if (IsWindow(window)) DestroyWindow(window);
        DialogTest::TearDown();
    }

    static HWND Make(const WCHAR* text, HWND parent, int id = 0) {
        const DWORD style = WS_VISIBLE | (parent != nullptr ? WS_CHILD : WS_POPUP);
        const HWND made =
            CreateWindowExW(0, u"STATIC", text, style, 10, 20, 30, 40, parent,
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
        SetWindowLongPtrW(made, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Receive));
        return made;
    }

    static std::u16string TextOf(HWND handle, int size = 100) {
        WCHAR buffer[100] = u"?";
        GetWindowTextW(handle, buffer, size);
        return buffer;
    }

    HWND window = nullptr;
};

}  // namespace

TEST_F(Windows, TextIsCutToTheBuffer) {
    EXPECT_EQ(u"Top", TextOf(window));
    EXPECT_EQ(u"To", TextOf(window, 3));
    EXPECT_EQ(u"", TextOf(window, 1));
    EXPECT_EQ(3, GetWindowTextLengthW(window));
    EXPECT_TRUE(SetWindowTextW(window, u"\x20AC"));
    EXPECT_EQ(u"\x20AC", TextOf(window));
    EXPECT_TRUE(SetWindowTextW(window, nullptr));
    EXPECT_EQ(u"", TextOf(window));
    EXPECT_EQ(
        (Lines{R"(SetWindowTextW(window 1, "<U+20AC>") = TRUE)", "SetWindowTextW(window 1, null) = TRUE"}),
        device.Calls({"SetWindowTextW"}));
}

TEST_F(Windows, TextGoesThroughTheProcedure) {
    TextOf(window);
    SetWindowTextW(window, u"Text");
    EXPECT_EQ((std::vector<std::pair<HWND, UINT>>{{window, WM_GETTEXT}, {window, WM_SETTEXT}}), received);
}

TEST_F(Windows, TreeIsWalkedInTheOrderOfMaking) {
    const HWND first = Make(u"1", window, 1);
    const HWND second = Make(u"2", window, 2);
    const HWND inner = Make(u"3", first, 3);
    EXPECT_EQ(first, GetWindow(window, GW_CHILD));
    EXPECT_EQ(second, GetWindow(first, GW_HWNDNEXT));
    EXPECT_EQ(nullptr, GetWindow(second, GW_HWNDNEXT));
    EXPECT_EQ(first, GetWindow(second, GW_HWNDPREV));
    EXPECT_EQ(second, GetWindow(first, GW_HWNDLAST));
    EXPECT_EQ(first, GetWindow(second, GW_HWNDFIRST));
    EXPECT_EQ(inner, GetWindow(first, GW_CHILD));
    EXPECT_EQ(nullptr, GetWindow(inner, GW_CHILD));
    EXPECT_EQ(first, GetParent(inner));
    EXPECT_EQ(nullptr, GetParent(window));
    EXPECT_EQ(second, GetDlgItem(window, 2));
    EXPECT_EQ(nullptr, GetDlgItem(window, 3)) << "children alone";
    EXPECT_EQ(DWORD{ERROR_CONTROL_ID_NOT_FOUND}, GetLastError());
    EXPECT_EQ(3, GetDlgCtrlID(inner));
    EXPECT_EQ("GetDlgItem(window 1, 2) = control 2 of window 1", device.Calls({"GetDlgItem"})[0]);
}

TEST_F(Windows, ParentIsToldOfItsDestructionBeforeItsChildrenAndFreedAfterThem) {
    const HWND first = Make(u"1", window);
    const HWND inner = Make(u"2", first);
    const HWND owned =
        CreateWindowExW(0, u"edit", u"", WS_POPUP, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
    DestroyWindow(window);
    EXPECT_EQ((std::vector<std::pair<HWND, UINT>>{{window, WM_DESTROY},
                                                  {first, WM_DESTROY},
                                                  {inner, WM_DESTROY},
                                                  {inner, WM_NCDESTROY},
                                                  {first, WM_NCDESTROY},
                                                  {window, WM_NCDESTROY}}),
              received);
    for (const HWND gone : {window, first, inner, owned})
        EXPECT_FALSE(IsWindow(gone));
}

TEST_F(Windows, DestroyedChildLeavesItsSiblings) {
    const HWND first = Make(u"1", window, 1);
    const HWND second = Make(u"2", window, 2);
    SetFocus(first);
    DestroyWindow(first);
    EXPECT_EQ(second, GetWindow(window, GW_CHILD));
    EXPECT_EQ(nullptr, GetFocus());
}

TEST_F(Windows, ValuesAreKeptAndTheOnesBeforeReturned) {
    EXPECT_EQ(0, SetWindowLongPtrW(window, GWLP_USERDATA, 0x1234));
    EXPECT_EQ(0x1234, GetWindowLongPtrW(window, GWLP_USERDATA));
    EXPECT_EQ(0x1234, SetWindowLongPtrW(window, GWLP_USERDATA, 0));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(Receive), GetWindowLongPtrW(window, GWLP_WNDPROC));
    EXPECT_EQ(static_cast<LONG>(WS_VISIBLE | WS_POPUP), GetWindowLongPtrW(window, GWL_STYLE));
    EXPECT_EQ((Lines{"SetWindowLongPtrW(window 1, GWLP_WNDPROC, procedure) = procedure",
                     "SetWindowLongPtrW(window 1, GWLP_USERDATA, data) = 0",
                     "SetWindowLongPtrW(window 1, GWLP_USERDATA, 0) = data"}),
              device.Calls({"SetWindowLongPtrW"}));
}

TEST_F(Windows, ValuesOfDialogsAreNotThoseOfOthers) {
    EXPECT_EQ(0, GetWindowLongPtrW(window, DWLP_MSGRESULT));
    EXPECT_EQ(DWORD{ERROR_INVALID_INDEX}, GetLastError());
    EXPECT_EQ(0, SetWindowLongPtrW(window, 4711, 1));
}

TEST_F(Windows, HandleThatIsGoneIsAViolationButForIsWindow) {
    DestroyWindow(window);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(IsWindow(nullptr));
    EXPECT_FALSE(SetWindowTextW(window, u""));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    EXPECT_FALSE(DestroyWindow(window));
    EXPECT_EQ((Lines{R"(SetWindowTextW(closed window 1, ""): closed window 1 is not open)",
                     "DestroyWindow(closed window 1): closed window 1 is not open"}),
              TakeViolations());
}

TEST_F(Windows, NullHandleFailsWithoutAViolation) {
    WCHAR text[4] = u"???";
    EXPECT_FALSE(SetWindowTextW(nullptr, u""));
    EXPECT_EQ(0, GetWindowTextW(nullptr, text, 4));
    EXPECT_EQ(u"", std::u16string(text));
    EXPECT_EQ(0, SendMessageW(nullptr, WM_CLOSE, 0, 0));
    EXPECT_EQ(nullptr, GetDlgItem(nullptr, 1));
    EXPECT_EQ(0, SendDlgItemMessageW(nullptr, 1, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_EQ(0, GetWindowLongPtrW(nullptr, GWLP_USERDATA));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
}

TEST_F(Windows, DisabledAndHiddenWindowsAreToldOfTheChange) {
    EXPECT_FALSE(EnableWindow(window, FALSE));
    EXPECT_TRUE(EnableWindow(window, FALSE)) << "it was disabled before";
    EXPECT_FALSE(IsWindowEnabled(window));
    EXPECT_TRUE(ShowWindow(window, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ((std::vector<std::pair<HWND, UINT>>{{window, WM_ENABLE}, {window, WM_SHOWWINDOW}}), received);
}

TEST_F(Windows, ChildOfAHiddenWindowIsNotVisible) {
    const HWND child = Make(u"1", window);
    EXPECT_TRUE(IsWindowVisible(child));
    ShowWindow(window, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(child));
}

TEST_F(Windows, PlacesAreOfTheScreenAndOfTheWindow) {
    RECT place{};
    EXPECT_TRUE(GetWindowRect(Make(u"1", window), &place));
    EXPECT_EQ(20, place.left);
    EXPECT_EQ(40, place.top);
    EXPECT_EQ(50, place.right);
    EXPECT_EQ(80, place.bottom);
    EXPECT_TRUE(GetClientRect(window, &place));
    EXPECT_EQ(0, place.left);
    EXPECT_EQ(40, place.bottom);
}

TEST_F(Windows, FocusChangeIsToldToBoth) {
    const HWND other = Make(u"1", window);
    EXPECT_EQ(nullptr, SetFocus(window));
    EXPECT_EQ(window, SetFocus(other));
    EXPECT_EQ(other, GetFocus());
    EXPECT_EQ((std::vector<std::pair<HWND, UINT>>{
                  {window, WM_SETFOCUS}, {window, WM_KILLFOCUS}, {other, WM_SETFOCUS}}),
              received);
}

TEST_F(Windows, PreviousProcedureIsCalledWithTheMessage) {
    SetWindowTextW(window, u"Text");
    WCHAR buffer[10];
    EXPECT_EQ(4, CallWindowProcW(DefWindowProcW, window, WM_GETTEXT, 10, reinterpret_cast<LPARAM>(buffer)));
    EXPECT_EQ(Lines{R"(CallWindowProcW(default procedure, window 1, WM_GETTEXT, 10) = 4, "Text")"},
              device.Calls({"CallWindowProcW"}));
}

TEST_F(Windows, ItemTextsGoByTheirIds) {
    Make(u"One", window, 1);
    WCHAR buffer[10];
    EXPECT_EQ(3u, GetDlgItemTextW(window, 1, buffer, 10));
    EXPECT_EQ(u"One", std::u16string(buffer));
    EXPECT_TRUE(SetDlgItemTextW(window, 1, u"Other"));
    EXPECT_EQ(5, SendDlgItemMessageW(window, 1, WM_GETTEXTLENGTH, 0, 0));
    EXPECT_EQ(0u, GetDlgItemTextW(window, 2, buffer, 10));
    EXPECT_EQ(u"", std::u16string(buffer));
    EXPECT_FALSE(SetDlgItemTextW(window, 2, u""));
    EXPECT_EQ(Lines{"SendDlgItemMessageW(window 1, 1, WM_GETTEXTLENGTH, 0x0, 0x0) = 5"},
              device.Calls({"SendDlgItemMessageW"}));
}

TEST_F(Windows, UnknownClassMakesNone) {
    EXPECT_EQ(nullptr,
              CreateWindowExW(0, u"Unheard of", u"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(DWORD{ERROR_CANNOT_FIND_WND_CLASS}, GetLastError());
}

TEST_F(Windows, WindowLeftAtTheEndIsOneViolationWithAllItHolds) {
    Make(u"1", window);
    CreateWindowExW(0, u"edit", u"", WS_POPUP, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
    device.EndTest();
    EXPECT_EQ(Lines{"window 1 is still open at the end of the test"}, TakeViolations());
    device.BeginTest();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Windows, WindowFromBeforeTheTestIsNoLeak) {
    device.BeginTest();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(Lines{"IsWindow(earlier window 1) = TRUE"}, device.Calls());
    device.EndTest();
    device.BeginTest();
    EXPECT_TRUE(IsWindow(window));
}
