#include "ui/Window.h"

#include "base/Contained.h"

namespace {

int SignedLowWord(LPARAM value) {
    return static_cast<int16_t>(LOWORD(value));
}

int SignedHighWord(LPARAM value) {
    return static_cast<int16_t>(HIWORD(value));
}

void EndForUnboundWindow(HWND window) {
    // While the box is shown, messages are delivered, also to this window; each would show a further box.
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcW));
    MessageBoxW(nullptr, TEXT("Window not found in Window::wndProc\n"), TEXT("Fatal Error"), MB_ICONHAND);
    TerminateProcess(GetCurrentProcess(), 1);
}

}  // namespace

Window::~Window() {
    DestroyLiveWindow();
}

void Window::DestroyLiveWindow() const {
    if (window != nullptr && IsWindow(window)) DestroyWindow(window);
}

LRESULT Window::OnNotify(WPARAM wParam, LPARAM lParam) {
    return windowBindings.CallPreviousProc(window, WM_NOTIFY, wParam, lParam);
}

LRESULT Window::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) return OnNotify(wParam, lParam);
    CallHandler(message, wParam, lParam);
    const LRESULT result = windowBindings.CallPreviousProc(window, message, wParam, lParam);
    if (message == WM_DESTROY) window = nullptr;
    return result;
}

void Window::CallHandler(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            return OnPaint();
        case WM_DESTROY:
            return OnDestroy();
        case WM_SIZE:
            return OnSize(LOWORD(lParam), HIWORD(lParam));
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), reinterpret_cast<HWND>(lParam), HIWORD(wParam));
        case WM_TIMER:
            return OnTimer(wParam);
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnLButton(message == WM_LBUTTONDBLCLK, SignedLowWord(lParam), SignedHighWord(lParam),
                             wParam);
        default:
            return;
    }
}

LRESULT CALLBACK Window::wndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* const object = windowBindings.FindWindowObject(window);
    if (object == nullptr) {
        EndForUnboundWindow(window);
        return 0;
    }
    // After WM_DESTROY the object has no window, but records of others may have prevented the unbinding.
    if (object->window != window) return windowBindings.CallPreviousProc(window, message, wParam, lParam);

    LRESULT result = 0;
    if (RunContained([&] { result = object->WindowProc(message, wParam, lParam); })) return result;

    object->failure.Note(ERROR_NOT_ENOUGH_MEMORY);
    // This has no effect on a window that is no dialog.
    EndDialog(window, -1);
    if (message == WM_DESTROY) {
        // The system destroys the window all the same, so its binding has to be removed.
        object->window = nullptr;
        return windowBindings.CallPreviousProc(window, message, wParam, lParam);
    }
    return 0;
}
