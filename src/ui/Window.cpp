#include "ui/Window.h"

#include "frame/Contained.h"

namespace {

int SignedLowWord(LPARAM value) {
    return static_cast<int16_t>(LOWORD(value));
}

int SignedHighWord(LPARAM value) {
    return static_cast<int16_t>(HIWORD(value));
}

void EndForUnboundWindow() {
    MessageBoxW(nullptr, TEXT("Window not found in Window::wndProc\n"), TEXT("Fatal Error"), MB_ICONHAND);
    TerminateProcess(GetCurrentProcess(), 1);
}

}  // namespace

Window::~Window() {
    DestroyLiveWindow();
}

void Window::DestroyLiveWindow() {
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
        EndForUnboundWindow();
        return 0;
    }
    LRESULT result = 0;
    if (RunContained([&] { result = object->WindowProc(message, wParam, lParam); })) return result;

    EndDialog(window, -1);
    if (message == WM_DESTROY) {
        // The window goes all the same, and its binding with it.
        object->window = nullptr;
        return windowBindings.CallPreviousProc(window, message, wParam, lParam);
    }
    return 0;
}
