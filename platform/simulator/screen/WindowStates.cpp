/* Making windows; whether and where they are shown; whether they take input. */
#include "Platform.h"

#include <utility>

#include "machine/Call.h"
#include "machine/Text.h"
#include "modules/Modules.h"
#include "screen/Controls.h"
#include "screen/Screen.h"

namespace {

using simulator::Call;
using simulator::Hex8;
using simulator::Quoted;
using simulator::Screen;
using simulator::Window;
using simulator::WindowName;

std::string TruthText(BOOL value) {
    return value != FALSE ? "TRUE" : "FALSE";
}

/* Sets a bit of the style; whether it was set before. */
bool ExchangeStyle(Window& window, DWORD bit, bool isSet) {
    const DWORD style = isSet ? window.style | bit : window.style & ~bit;
    return (std::exchange(window.style, style) & bit) != 0;
}

/* The upper left corner on the screen of the window's place. */
POINT OriginOf(const Window& window) {
    POINT origin{window.place.left, window.place.top};
    if (const Window* const container = Screen::Current().Lookup(window.container)) {
        const POINT outer = OriginOf(*container);
        origin.x += outer.x;
        origin.y += outer.y;
    }
    return origin;
}

}  // namespace

HWND WINAPI CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, INT x, INT y,
                            INT width, INT height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID) {
    Call call("CreateWindowExW");
    const bool isChild = (style & WS_CHILD) != 0;
    const int id = isChild ? static_cast<int>(reinterpret_cast<uintptr_t>(menu)) : 0;
    call.Arguments({Hex8(extendedStyle), Quoted(className), Quoted(text), Hex8(style), WindowName(parent),
                    std::to_string(id), simulator::ModuleName(instance)});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    if (Screen::Current().Find(parent, call) == nullptr && (parent != nullptr || isChild))
        return call.Fails(HWND{}, "null", ERROR_INVALID_WINDOW_HANDLE);
    auto window = simulator::NewControl(simulator::TextOrEmpty(className), !isChild);
    if (window == nullptr) return call.Fails(HWND{}, "null", ERROR_CANNOT_FIND_WND_CLASS);
    window->container = isChild ? parent : nullptr;
    window->owner = isChild ? nullptr : parent;
    window->style = style;
    window->extendedStyle = extendedStyle;
    window->id = id;
    window->instance = instance;
    window->text = simulator::TextOrEmpty(text);
    window->place = {x, y, x + width, y + height};
    simulator::PrepareControl(*window);
    const HWND handle = Screen::Current().Add(std::move(window));
    return call.Returns(handle, WindowName(handle));
}

BOOL WINAPI EnableWindow(HWND handle, BOOL enable) {
    Call call("EnableWindow");
    call.Arguments({WindowName(handle), TruthText(enable)});
    if (call.MustFail()) return call.False(call.OrderedError());
    Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    const bool wasDisabled = ExchangeStyle(*window, WS_DISABLED, enable == FALSE);
    if (wasDisabled != (enable == FALSE))
        Screen::Current().Deliver(handle, WM_ENABLE, enable != FALSE ? 1 : 0, 0);
    return wasDisabled ? call.True() : call.Returns(FALSE, "FALSE");
}

BOOL WINAPI IsWindowEnabled(HWND handle) {
    Call call("IsWindowEnabled");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.False(call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    return window->IsEnabled() ? call.True() : call.Returns(FALSE, "FALSE");
}

BOOL WINAPI ShowWindow(HWND handle, INT show) {
    Call call("ShowWindow");
    call.Arguments({WindowName(handle), std::to_string(show)});
    if (call.MustFail()) return call.False(call.OrderedError());
    Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    const bool isShown = show != SW_HIDE;
    const bool wasShown = ExchangeStyle(*window, WS_VISIBLE, isShown);
    if (wasShown != isShown) Screen::Current().Deliver(handle, WM_SHOWWINDOW, isShown ? 1 : 0, 0);
    return wasShown ? call.True() : call.Returns(FALSE, "FALSE");
}

BOOL WINAPI IsWindowVisible(HWND handle) {
    Call call("IsWindowVisible");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.False(call.OrderedError());
    const Window* window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    while (window->IsVisible() && window->container != nullptr)
        window = Screen::Current().Lookup(window->container);
    return window->IsVisible() ? call.True() : call.Returns(FALSE, "FALSE");
}

BOOL WINAPI GetWindowRect(HWND handle, LPRECT place) {
    Call call("GetWindowRect");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.False(call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    const POINT origin = OriginOf(*window);
    const RECT& own = window->place;
    *place = {origin.x, origin.y, origin.x + own.right - own.left, origin.y + own.bottom - own.top};
    return call.True(std::to_string(place->left) + " " + std::to_string(place->top) + " " +
                     std::to_string(place->right) + " " + std::to_string(place->bottom));
}

BOOL WINAPI GetClientRect(HWND handle, LPRECT place) {
    Call call("GetClientRect");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.False(call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    *place = {0, 0, window->place.right - window->place.left, window->place.bottom - window->place.top};
    return call.True(std::to_string(place->right) + " " + std::to_string(place->bottom));
}
