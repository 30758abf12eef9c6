#include "ui/Window.h"

#include <stdexcept>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

/* Notes its handlers' calls. */
class NotingWindow : public Window {
public:
    void OnPaint() override { Note("paint"); }
    void OnDestroy() override { Note("destroy"); }
    void OnCommand(int id, HWND control, int notification) override {
        Note("command " + std::to_string(id) + (control != nullptr ? " control " : " none ") +
             std::to_string(notification));
    }
    LRESULT OnNotify(WPARAM wParam, LPARAM lParam) override {
        Note("notify");
        return notifyResult != 0 ? notifyResult : Window::OnNotify(wParam, lParam);
    }
    void OnLButton(bool isDoubleClick, int x, int y, WPARAM keys) override {
        Note((isDoubleClick ? "double " : "down ") + std::to_string(x) + " " + std::to_string(y) + " " +
             std::to_string(keys));
    }
    void OnTimer(WPARAM timer) override { Note("timer " + std::to_string(timer)); }
    void OnSize(int width, int height) override {
        Note("size " + std::to_string(width) + " " + std::to_string(height));
    }

    void Note(std::string text) {
        notes.push_back(std::move(text));
        if (throws) throw std::runtime_error("a handler's own");
    }

    std::vector<std::string> notes;
    LRESULT notifyResult = 0;
    bool throws = false;
};

std::vector<UINT> passedOn;

LRESULT CALLBACK PreviousProc(HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    passedOn.push_back(message);
    return 77;
}

class WindowOnDevice : public ScreenTest {
protected:
    /* Runs `operation` while `object` is bound to a control of a dialog, on top of PreviousProc. */
    void WithBound(Window& object, const std::function<void(HWND control)>& operation) {
        FormDialog dialog;
        device.UseDialog([&](DialogUser& user) {
            const HWND control = GetDlgItem(user.Window(), FORM_FIELD);
            const LONG_PTR before = GetWindowLongPtrW(control, GWLP_WNDPROC);
            SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PreviousProc));
            object.window = control;
            windowBindings.AttachWindow(control, &object);
            passedOn.clear();
            operation(control);
            windowBindings.DetachWindow(control);
            object.window = nullptr;
            SetWindowLongPtrW(control, GWLP_WNDPROC, before);
            Cancel(user);
        });
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }
};

struct Message {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    const char* note;
};

// The words of a size are unsigned, those of a position signed.
const Message handled[] = {
    {WM_PAINT, 0, 0, "paint"},
    {WM_SIZE, 0, MAKELPARAM(240, 0xFFFF), "size 240 65535"},
    {WM_COMMAND, MAKEWPARAM(1016, 0), 0, "command 1016 none 0"},
    {WM_COMMAND, MAKEWPARAM(0xFFFF, 0x8000), 8, "command 65535 control 32768"},
    {WM_TIMER, 12, 0, "timer 12"},
    {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0xFFFF, 0x8000), "down -1 -32768 1"},
    {WM_LBUTTONDBLCLK, 0, MAKELPARAM(3, 4), "double 3 4 0"},
};

}  // namespace

TEST_F(WindowOnDevice, HandlersGetTheMessagesPartsAndEveryMessageIsPassedOn) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        for (const Message& message : handled) {
            object.notes.clear();
            passedOn.clear();
            EXPECT_EQ(77, SendMessageW(control, message.message, message.wParam, message.lParam));
            EXPECT_EQ((std::vector<std::string>{message.note}), object.notes);
            EXPECT_EQ((std::vector<UINT>{message.message}), passedOn);
        }
    });
}

TEST_F(WindowOnDevice, OtherMessagesAreOnlyPassedOn) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        EXPECT_EQ(77, SendMessageW(control, WM_APP, 1, 2));
        EXPECT_EQ(77, SendMessageW(control, WM_LBUTTONUP, 1, 2));
        EXPECT_EQ((std::vector<UINT>{WM_APP, WM_LBUTTONUP}), passedOn);
    });
    EXPECT_TRUE(object.notes.empty());
}

TEST_F(WindowOnDevice, WindowWithoutHandlersPassesEveryMessageOn) {
    Window object;
    WithBound(object, [&](HWND control) {
        for (const Message& message : handled)
            EXPECT_EQ(77, SendMessageW(control, message.message, message.wParam, message.lParam));
        EXPECT_EQ(77, SendMessageW(control, WM_NOTIFY, 0, 0));
    });
    EXPECT_EQ(std::size(handled) + 1, passedOn.size());
}

TEST_F(WindowOnDevice, NotificationIsPassedOnOnceAsTheHandlerStands) {
    NotingWindow object;
    NMHDR header{};
    WithBound(object, [&](HWND control) {
        EXPECT_EQ(77, SendMessageW(control, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&header)));
        EXPECT_EQ((std::vector<UINT>{WM_NOTIFY}), passedOn);
    });
    EXPECT_EQ((std::vector<std::string>{"notify"}), object.notes);
}

TEST_F(WindowOnDevice, NotificationThatTheHandlerAnswersIsNotPassedOn) {
    NotingWindow object;
    object.notifyResult = 9;
    NMHDR header{};
    WithBound(object, [&](HWND control) {
        EXPECT_EQ(9, SendMessageW(control, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&header)));
        EXPECT_TRUE(passedOn.empty());
    });
}

TEST_F(WindowOnDevice, AfterWmDestroyTheObjectHasNoWindowAndTheWindowNoObject) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        EXPECT_EQ(77, SendMessageW(control, WM_DESTROY, 0, 0));
        EXPECT_EQ(nullptr, object.window);
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
    });
    EXPECT_EQ((std::vector<std::string>{"destroy"}), object.notes);
}

TEST_F(WindowOnDevice, MessagesAfterWmDestroyArePassedOnWhereTheWindowCouldNotBeUnbound) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        auto* const own = reinterpret_cast<WindowHookRecord*>(GetWindowLongPtrW(control, GWLP_USERDATA));
        WindowHookRecord foreign{PreviousProc, PreviousProc, nullptr, own};
        SetWindowLongPtrW(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&foreign));
        EXPECT_EQ(77, SendMessageW(control, WM_DESTROY, 0, 0));
        EXPECT_EQ(nullptr, object.window);
        object.notes.clear();
        EXPECT_EQ(77, SendMessageW(control, WM_NCDESTROY, 0, 0));
        EXPECT_EQ(77, SendMessageW(control, WM_PAINT, 0, 0));
        EXPECT_TRUE(object.notes.empty()) << "the window is no longer the object's";
        EXPECT_EQ(77, SendMessageW(control, WM_DESTROY, 0, 0));
        SetWindowLongPtrW(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(own));
        // The record can be taken from the window now, and is still freed only once.
    });
}

TEST_F(WindowOnDevice, HandlerThatThrowsIsStoppedAtTheSystemsCall) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        object.throws = true;
        for (const Message& message : handled)
            EXPECT_EQ(0, SendMessageW(control, message.message, message.wParam, message.lParam));
        EXPECT_EQ(0, SendMessageW(control, WM_NOTIFY, 0, 0));
    });
}

TEST_F(WindowOnDevice, HandlerThatThrowsAtTheEndLeavesTheWindowUnboundAllTheSame) {
    NotingWindow object;
    WithBound(object, [&](HWND control) {
        object.throws = true;
        EXPECT_EQ(77, SendMessageW(control, WM_DESTROY, 0, 0));
        EXPECT_EQ(nullptr, object.window);
        EXPECT_EQ(nullptr, windowBindings.FindWindowObject(control));
        EXPECT_EQ((std::vector<UINT>{WM_DESTROY}), passedOn);
    });
}

TEST_F(WindowOnDevice, DestroyedObjectDestroysItsLiveWindow) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        const HWND control = GetDlgItem(user.Window(), FORM_FIELD);
        {
            Window object;
            object.window = control;
            windowBindings.AttachWindow(control, &object);
        }
        EXPECT_FALSE(IsWindow(control));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(WindowOnDevice, ObjectWithoutAWindowOrWithADeadOneDestroysNothing) {
    device.ForgetCalls();
    { const Window unbound; }
    EXPECT_TRUE(device.Calls().empty()) << "the system is not even asked";
    HWND closed = nullptr;
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        closed = GetDlgItem(user.Window(), FORM_FIELD);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
    device.ForgetCalls();
    {
        Window object;
        object.window = closed;
    }
    EXPECT_EQ(0u, device.CountCalls("DestroyWindow"));
}

TEST_F(WindowOnDevice, MessageToAnUnboundWindowIsAnsweredWithZeroWhereTheProcessCannotBeEnded) {
    device.AnswerMessageBox(IDOK);
    device.FailCall("TerminateProcess", 1, ERROR_ACCESS_DENIED);
    FormDialog dialog;
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(0, Window::wndProc(GetDlgItem(user.Window(), FORM_FIELD), WM_APP, 0, 0));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(u"Fatal Error", device.MessageBoxes().at(0).caption);
}

using WindowOnDeviceDeathTest = WindowOnDevice;

TEST_F(WindowOnDeviceDeathTest, MessageToAnUnboundWindowShowsTheFatalBoxAndEndsTheProcessWithOne) {
    const auto sendToUnbound = [this] {
        device.AnswerMessageBox(IDOK);
        device.SetTerminationHook([this](UINT) {
            const std::vector<std::string> calls = device.Calls({"SetWindowLongPtrW", "MessageBoxW"});
            fprintf(stderr, "[%s] ", calls.at(calls.size() - 2).c_str());
            const ShownMessageBox& box = device.MessageBoxes().back();
            fprintf(stderr, "[%s] [%s] %x", std::string(box.text.begin(), box.text.end()).c_str(),
                    std::string(box.caption.begin(), box.caption.end()).c_str(), box.flags);
        });
        FormDialog dialog;
        device.UseDialog(
            [](DialogUser& user) { Window::wndProc(GetDlgItem(user.Window(), FORM_FIELD), WM_APP, 0, 0); });
        dialog.DoModal(nullptr);
    };
    // The procedure is taken off before the box: the box has messages delivered.
    EXPECT_EXIT(sendToUnbound(), ::testing::ExitedWithCode(1),
                "\\[SetWindowLongPtrW\\(control 1101 of dialog 1, GWLP_WNDPROC, default procedure\\) = "
                "procedure\\] \\[Window not found in Window::wndProc\n\\] \\[Fatal Error\\] 10");
}
