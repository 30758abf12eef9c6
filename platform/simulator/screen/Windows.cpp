/* Windows: what they are, where they stand, what is stored with them. */
#include "Platform.h"

#include <algorithm>
#include <map>

#include "machine/Call.h"
#include "machine/Text.h"
#include "modules/Modules.h"
#include "screen/Controls.h"
#include "screen/Dialogs.h"
#include "screen/Screen.h"

namespace {

using simulator::Call;
using simulator::DialogWindow;
using simulator::Screen;
using simulator::Window;
using simulator::WindowName;

std::string IndexName(int index) {
    static const std::map<int, const char*> names = {
        {GWLP_WNDPROC, "GWLP_WNDPROC"},
        {GWLP_USERDATA, "GWLP_USERDATA"},
        {GWL_STYLE, "GWL_STYLE"},
        {GWL_EXSTYLE, "GWL_EXSTYLE"},
        {GWLP_ID, "GWLP_ID"},
        {DWLP_MSGRESULT, "DWLP_MSGRESULT"},
        {GWLP_HWNDPARENT, "GWLP_HWNDPARENT"},
        {GWLP_HINSTANCE, "GWLP_HINSTANCE"},
        {DWLP_DLGPROC, "DWLP_DLGPROC"},
        {DWLP_USER, "DWLP_USER"},
    };
    const auto found = names.find(index);
    return found != names.end() ? found->second : std::to_string(index);
}

/* A stored value as the journal shows it: addresses differ from run to run. */
std::string ValueText(int index, LONG_PTR value) {
    if (index == GWLP_WNDPROC) return simulator::ProcedureName(reinterpret_cast<WNDPROC>(value));
    if (index == GWL_STYLE || index == GWL_EXSTYLE) return simulator::Hex8(static_cast<uint32_t>(value));
    if (index == GWLP_HWNDPARENT) return WindowName(reinterpret_cast<HWND>(value));
    if (index == GWLP_HINSTANCE) return simulator::ModuleName(reinterpret_cast<HMODULE>(value));
    if (index == GWLP_ID || index == DWLP_MSGRESULT) return std::to_string(value);
    return value == 0 ? "0" : "data";
}

LONG_PTR DialogValue(const DialogWindow& dialog, int index) {
    if (index == DWLP_MSGRESULT) return dialog.messageResult;
    return index == DWLP_DLGPROC ? reinterpret_cast<LONG_PTR>(dialog.dialogProcedure) : dialog.dialogData;
}

void SetDialogValue(DialogWindow& dialog, int index, LONG_PTR value) {
    if (index == DWLP_MSGRESULT) dialog.messageResult = value;
    if (index == DWLP_DLGPROC) dialog.dialogProcedure = reinterpret_cast<DLGPROC>(value);
    if (index == DWLP_USER) dialog.dialogData = value;
}

bool IsDialogIndex(const Window& window, int index) {
    const bool isOne = index == DWLP_MSGRESULT || index == DWLP_DLGPROC || index == DWLP_USER;
    return isOne && dynamic_cast<const DialogWindow*>(&window) != nullptr;
}

/* Whether the window has a value of that index; it is then in `value`. */
bool ReadValue(const Window& window, int index, LONG_PTR& value) {
    if (IsDialogIndex(window, index)) {
        value = DialogValue(dynamic_cast<const DialogWindow&>(window), index);
        return true;
    }
    switch (index) {
        case GWLP_WNDPROC:
            value = reinterpret_cast<LONG_PTR>(window.procedure);
            return true;
        case GWLP_USERDATA:
            value = window.userData;
            return true;
        case GWL_STYLE:
            value = static_cast<LONG>(window.style);
            return true;
        case GWL_EXSTYLE:
            value = static_cast<LONG>(window.extendedStyle);
            return true;
        case GWLP_ID:
            value = window.id;
            return true;
        case GWLP_HINSTANCE:
            value = reinterpret_cast<LONG_PTR>(window.instance);
            return true;
        case GWLP_HWNDPARENT:
            value = reinterpret_cast<LONG_PTR>(window.container != nullptr ? window.container : window.owner);
            return true;
        default:
            return false;
    }
}

bool WriteValue(Window& window, int index, LONG_PTR value) {
    if (IsDialogIndex(window, index)) {
        SetDialogValue(dynamic_cast<DialogWindow&>(window), index, value);
        return true;
    }
    switch (index) {
        case GWLP_WNDPROC:
            window.procedure = reinterpret_cast<WNDPROC>(value);
            return true;
        case GWLP_USERDATA:
            window.userData = value;
            return true;
        case GWL_STYLE:
            window.style = static_cast<DWORD>(value);
            return true;
        case GWL_EXSTYLE:
            window.extendedStyle = static_cast<DWORD>(value);
            return true;
        case GWLP_ID:
            window.id = static_cast<int>(value);
            return true;
        default:
            return false;
    }
}

HWND Related(const Window& window, UINT relation) {
    const Screen& screen = Screen::Current();
    const Window* const container = screen.Lookup(window.container);
    const std::vector<HWND>& siblings = container != nullptr ? container->childWindows : screen.TopLevels();
    const auto here = std::find(siblings.begin(), siblings.end(), window.handle);
    switch (relation) {
        case GW_CHILD:
            return window.childWindows.empty() ? nullptr : window.childWindows.front();
        case GW_HWNDNEXT:
            return screen.NextOf(window);
        case GW_HWNDPREV:
            return here != siblings.begin() && here != siblings.end() ? here[-1] : nullptr;
        case GW_HWNDFIRST:
            return siblings.front();
        case GW_HWNDLAST:
            return siblings.back();
        case GW_OWNER:
            return window.owner;
        default:
            return nullptr;
    }
}

HWND ReturnsWindow(Call& call, HWND window) {
    return call.Returns(window, WindowName(window));
}

}  // namespace

BOOL WINAPI IsWindow(HWND window) {
    Call call("IsWindow");
    call.Arguments({WindowName(window)});
    if (call.MustFail()) return call.False(call.OrderedError());
    return Screen::Current().Lookup(window) != nullptr ? call.True() : call.Returns(FALSE, "FALSE");
}

BOOL WINAPI DestroyWindow(HWND window) {
    Call call("DestroyWindow");
    call.Arguments({WindowName(window)});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (Screen::Current().Find(window, call) == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    Screen::Current().Destroy(window);
    return call.True();
}

HWND WINAPI GetWindow(HWND handle, UINT relation) {
    Call call("GetWindow");
    call.Arguments({WindowName(handle), std::to_string(relation)});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.Fails(HWND{}, "null", ERROR_INVALID_WINDOW_HANDLE);
    return ReturnsWindow(call, Related(*window, relation));
}

HWND WINAPI GetParent(HWND handle) {
    Call call("GetParent");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.Fails(HWND{}, "null", ERROR_INVALID_WINDOW_HANDLE);
    return ReturnsWindow(call, window->container != nullptr ? window->container : window->owner);
}

INT WINAPI GetDlgCtrlID(HWND handle) {
    Call call("GetDlgCtrlID");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.Fails(0, "0", call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.Fails(0, "0", ERROR_INVALID_WINDOW_HANDLE);
    return call.Returns(window->id, std::to_string(window->id));
}

// Where pointers have 32 bits, the headers give both functions the names without Ptr.
LONG_PTR WINAPI GetWindowLongPtrW(HWND handle, INT index) {
    Call call("GetWindowLongPtrW");
    call.Arguments({WindowName(handle), IndexName(index)});
    if (call.MustFail()) return call.Fails(LONG_PTR{0}, "0", call.OrderedError());
    const Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.Fails(LONG_PTR{0}, "0", ERROR_INVALID_WINDOW_HANDLE);
    LONG_PTR value = 0;
    if (!ReadValue(*window, index, value)) return call.Fails(LONG_PTR{0}, "0", ERROR_INVALID_INDEX);
    return call.Returns(value, ValueText(index, value));
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND handle, INT index, LONG_PTR value) {
    Call call("SetWindowLongPtrW");
    call.Arguments({WindowName(handle), IndexName(index), ValueText(index, value)});
    if (call.MustFail()) return call.Fails(LONG_PTR{0}, "0", call.OrderedError());
    Window* const window = Screen::Current().Find(handle, call);
    if (window == nullptr) return call.Fails(LONG_PTR{0}, "0", ERROR_INVALID_WINDOW_HANDLE);
    LONG_PTR previous = 0;
    if (!ReadValue(*window, index, previous) || !WriteValue(*window, index, value))
        return call.Fails(LONG_PTR{0}, "0", ERROR_INVALID_INDEX);
    return call.Returns(previous, ValueText(index, previous));
}

HWND WINAPI SetFocus(HWND handle) {
    Call call("SetFocus");
    call.Arguments({WindowName(handle)});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    if (handle != nullptr && Screen::Current().Find(handle, call) == nullptr)
        return call.Fails(HWND{}, "null", ERROR_INVALID_WINDOW_HANDLE);
    const HWND previous = Screen::Current().Focus();
    Screen::Current().SetFocus(handle);
    return ReturnsWindow(call, previous);
}

HWND WINAPI GetFocus() {
    Call call("GetFocus");
    call.Arguments({});
    if (call.MustFail()) return call.Fails(HWND{}, "null", call.OrderedError());
    return ReturnsWindow(call, Screen::Current().Focus());
}
