/* What windows make of their messages. */
#include <gmock/gmock.h>

#include <cstdio>
#include <vector>

#include "helpers/DialogTest.h"
#include "ui/Window.h"

namespace {

using testing::ElementsAre;

/* Writes down which of its operations were called. */
class NotingWindow : public Window {
public:
    NotingWindow() {
        window = CreateWindowExW(0, L"STATIC", L"bound", 0, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
        windowBindings.AttachWindow(window, this);
    }
    ~NotingWindow() override { DestroyLiveWindow(); }

    void OnPaint() override { notes.emplace_back("paint"); }
    void OnDestroy() override { notes.emplace_back("destroy"); }
    void OnCommand(int id, HWND control, int notification) override {
        notes.push_back("command " + std::to_string(id) + " " + std::to_string(notification) +
                        (control == window ? " from control" : ""));
    }
    void OnLButton(bool isDoubleClick, int x, int y, WPARAM keys) override {
        notes.push_back((isDoubleClick ? "double click " : "click ") + std::to_string(x) + " " +
                        std::to_string(y) + " " + std::to_string(keys));
    }
    void OnTimer(WPARAM timer) override { notes.push_back("timer " + std::to_string(timer)); }
    void OnSize(int width, int height) override {
        notes.push_back("size " + std::to_string(width) + " " + std::to_string(height));
    }

    std::vector<std::string> notes;
};

class Windows : public DialogTest {};

/* Lets a window without an object meet the library's procedure, while a user confirms what is said. */
void MeetUnboundWindow() {
    // A visible one: the box itself brings it messages.
    const HWND window = CreateWindowExW(0, L"STATIC", L"unbound", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                        nullptr, nullptr, nullptr, nullptr);
    const ScreenUser user([](const ScreenUser& acting) {
        const ScreenUser::Message message = acting.ReadMessage(L"Fatal Error");
        const bool isStop = message.icon == LoadIconW(nullptr, IDI_ERROR);
        const size_t boxes = WindowsOf(GetWindowThreadProcessId(message.box, nullptr), L"#32770").size();
        std::fprintf(stderr, "%u %s: %ls", static_cast<unsigned>(boxes), isStop ? "stop" : "another icon",
                     message.text.c_str());
        std::fflush(stderr);
        PostMessageW(message.box, WM_COMMAND, IDOK, 0);
    });
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Window::wndProc));
    SendMessageW(window, WM_APP, 0, 0);
}

}  // namespace

/* Without the tests' own folder, which the process would leave behind. */
TEST(UnboundWindow, ShowsOneFatalBoxAndEndsTheProcess) {
    EXPECT_EXIT(MeetUnboundWindow(), testing::ExitedWithCode(1),
                "^1 stop: Window not found in Window::wndProc");
}

TEST_F(Windows, MessagesReachTheirOperations) {
    NotingWindow object;
    const HWND window = object.window;
    SendMessageW(window, WM_PAINT, 0, 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(1016, 0), 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(3, 0x300), reinterpret_cast<LPARAM>(window));
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, -20));
    SendMessageW(window, WM_LBUTTONDBLCLK, MK_SHIFT, MAKELPARAM(-1, 2));
    SendMessageW(window, WM_TIMER, 9, 0);
    SendMessageW(window, WM_SIZE, 0, MAKELPARAM(240, 320));
    EXPECT_THAT(object.notes,
                ElementsAre("paint", "command 1016 0", "command 3 768 from control", "click 10 -20 1",
                            "double click -1 2 4", "timer 9", "size 240 320"));
}

TEST_F(Windows, MessagesGoOnToThePreviousProcedure) {
    NotingWindow object;
    SendMessageW(object.window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"passed on"));
    EXPECT_EQ(L"passed on", TextOf(object.window));
    EXPECT_EQ(9, SendMessageW(object.window, WM_GETTEXTLENGTH, 0, 0));
}

TEST_F(Windows, DestroyedOneIsForgotten) {
    NotingWindow object;
    DestroyWindow(object.window);
    EXPECT_EQ(nullptr, object.window);
    EXPECT_THAT(object.notes, ElementsAre("destroy"));
}
