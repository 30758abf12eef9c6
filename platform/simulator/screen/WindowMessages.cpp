/* Sending, posting and passing on of messages. */
#include "Platform.h"

#include <algorithm>
#include <cstring>

#include "machine/Call.h"
#include "machine/Text.h"
#include "screen/Messages.h"
#include "screen/Screen.h"

namespace {

using simulator::Call;
using simulator::Screen;
using simulator::Window;
using simulator::WindowName;

std::vector<std::string> WithMessage(std::vector<std::string> arguments, HWND window, UINT message,
                                     WPARAM wParam, LPARAM lParam) {
    const auto more = simulator::MessageArguments(window, message, wParam, lParam);
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

/* The control of that id; null with the last error when there is none. */
Window* ControlOf(HWND dialog, int id, const Call& call) {
    const Window* const container = Screen::Current().Find(dialog, call);
    if (container != nullptr) {
        for (const HWND child : container->childWindows) {
            Window* const control = Screen::Current().Lookup(child);
            if (control != nullptr && control->id == id) return control;
        }
    }
    SetLastError(container != nullptr ? ERROR_CONTROL_ID_NOT_FOUND : ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

/* Fetches a window's text as its procedure gives it. */
int FetchText(HWND window, LPWSTR buffer, int size) {
    if (size <= 0) return 0;
    buffer[0] = 0;
    return static_cast<int>(Screen::Current().Deliver(window, WM_GETTEXT, static_cast<WPARAM>(size),
                                                      reinterpret_cast<LPARAM>(buffer)));
}

int ReturnsText(Call& call, int length, LPCWSTR buffer) {
    return call.Returns(length, length > 0 ? std::to_string(length) + ", " + simulator::Quoted(buffer) : "0");
}

BOOL SetText(HWND window, LPCWSTR text) {
    return Screen::Current().Deliver(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

}  // namespace

LRESULT WINAPI SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Call call("SendMessageW");
    call.Arguments(WithMessage({WindowName(window)}, window, message, wParam, lParam));
    if (call.MustFail()) return call.Fails(LRESULT{0}, "0", call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr)
        return call.Fails(LRESULT{0}, "0", ERROR_INVALID_WINDOW_HANDLE);
    const LRESULT result = Screen::Current().Deliver(window, message, wParam, lParam);
    return call.Returns(result, simulator::MessageResult(window, message, lParam, result));
}

BOOL WINAPI PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Call call("PostMessageW");
    call.Arguments(WithMessage({WindowName(window)}, window, message, wParam, lParam));
    if (call.MustFail()) return call.False(call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    Screen::Current().Post(window, message, wParam, lParam);
    return call.True();
}

LRESULT WINAPI CallWindowProcW(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Call call("CallWindowProcW");
    call.Arguments(WithMessage({simulator::ProcedureName(procedure), WindowName(window)}, window, message,
                               wParam, lParam));
    if (call.MustFail()) return call.Fails(LRESULT{0}, "0", call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr)
        return call.Fails(LRESULT{0}, "0", ERROR_INVALID_WINDOW_HANDLE);
    const LRESULT result = simulator::CallProcedure(procedure, window, message, wParam, lParam);
    return call.Returns(result, simulator::MessageResult(window, message, lParam, result));
}

HWND WINAPI GetDlgItem(HWND dialog, INT id) {
    Call call("GetDlgItem");
    call.Arguments({WindowName(dialog), std::to_string(id)});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    const Window* const control = ControlOf(dialog, id, call);
    if (control == nullptr) return call.Fails(HWND{}, "null", GetLastError());
    return call.Returns(control->handle, control->name);
}

LRESULT WINAPI SendDlgItemMessageW(HWND dialog, INT id, UINT message, WPARAM wParam, LPARAM lParam) {
    Call call("SendDlgItemMessageW");
    const Window* const control = ControlOf(dialog, id, call);
    const HWND window = control != nullptr ? control->handle : nullptr;
    call.Arguments(WithMessage({WindowName(dialog), std::to_string(id)}, window, message, wParam, lParam));
    if (call.MustFail()) return call.Fails(LRESULT{0}, "0", call.OrderedError());
    if (window == nullptr) return call.Fails(LRESULT{0}, "0", GetLastError());
    const LRESULT result = Screen::Current().Deliver(window, message, wParam, lParam);
    return call.Returns(result, simulator::MessageResult(window, message, lParam, result));
}

INT WINAPI GetWindowTextW(HWND window, LPWSTR buffer, INT size) {
    Call call("GetWindowTextW");
    call.Arguments({WindowName(window), std::to_string(size)});
    if (size > 0) buffer[0] = 0;
    if (call.MustFail()) return call.Fails(0, "0", call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr)
        return call.Fails(0, "0", ERROR_INVALID_WINDOW_HANDLE);
    return ReturnsText(call, FetchText(window, buffer, size), buffer);
}

INT WINAPI GetWindowTextLengthW(HWND window) {
    Call call("GetWindowTextLengthW");
    call.Arguments({WindowName(window)});
    if (call.MustFail()) return call.Fails(0, "0", call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr)
        return call.Fails(0, "0", ERROR_INVALID_WINDOW_HANDLE);
    const auto length = static_cast<INT>(Screen::Current().Deliver(window, WM_GETTEXTLENGTH, 0, 0));
    return call.Returns(length, std::to_string(length));
}

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text) {
    Call call("SetWindowTextW");
    call.Arguments({WindowName(window), simulator::Quoted(text)});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    return SetText(window, text) != FALSE ? call.True() : call.False(ERROR_GEN_FAILURE);
}

UINT WINAPI GetDlgItemTextW(HWND dialog, INT id, LPWSTR buffer, INT size) {
    Call call("GetDlgItemTextW");
    call.Arguments({WindowName(dialog), std::to_string(id), std::to_string(size)});
    if (size > 0) buffer[0] = 0;
    if (call.MustFail()) return call.Fails(UINT{0}, "0", call.OrderedError());
    const Window* const control = ControlOf(dialog, id, call);
    if (control == nullptr) return call.Fails(UINT{0}, "0", GetLastError());
    return static_cast<UINT>(ReturnsText(call, FetchText(control->handle, buffer, size), buffer));
}

BOOL WINAPI SetDlgItemTextW(HWND dialog, INT id, LPCWSTR text) {
    Call call("SetDlgItemTextW");
    call.Arguments({WindowName(dialog), std::to_string(id), simulator::Quoted(text)});
    if (call.MustFail()) return call.False(call.OrderedError());
    const Window* const control = ControlOf(dialog, id, call);
    if (control == nullptr) return call.False(GetLastError());
    return SetText(control->handle, text) != FALSE ? call.True() : call.False(ERROR_GEN_FAILURE);
}
