/* What dialogs do by themselves, and the way of the focus through them. */
#include "Platform.h"

#include <algorithm>

#include "machine/Allocations.h"
#include "screen/Controls.h"
#include "screen/Dialogs.h"

namespace simulator {

namespace {

/* Messages to which the dialog procedure's own result is the answer. */
bool IsAnsweredDirectly(UINT message) {
    switch (message) {
        case WM_CHARTOITEM:
        case WM_COMPAREITEM:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORMSGBOX:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC:
        case WM_INITDIALOG:
        case WM_QUERYDRAGICON:
        case WM_VKEYTOITEM:
            return true;
        default:
            return false;
    }
}

HWND ControlOf(const Window& dialog, int id) {
    for (const HWND child : dialog.childWindows) {
        const Window* const control = Screen::Current().Lookup(child);
        if (control != nullptr && control->id == id) return child;
    }
    return nullptr;
}

LRESULT DefaultButtonOf(const DialogWindow& dialog) {
    if (dialog.defaultButton == IDOK && ControlOf(dialog, IDOK) == nullptr) return 0;
    return MAKELONG(dialog.defaultButton, DC_HASDEFID);
}

void MoveFocus(const DialogWindow& dialog, WPARAM wParam, LPARAM lParam) {
    const bool namesControl = LOWORD(lParam) != 0;
    FocusByTab(namesControl ? reinterpret_cast<HWND>(wParam)
                            : NextTabStop(dialog, Screen::Current().Focus(), wParam != 0));
}

LRESULT DefaultResult(DialogWindow& dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            Screen::Current().Post(dialog.handle, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                                   reinterpret_cast<LPARAM>(ControlOf(dialog, IDCANCEL)));
            return 0;
        case DM_GETDEFID:
            return DefaultButtonOf(dialog);
        case DM_SETDEFID:
            dialog.defaultButton = static_cast<int>(wParam);
            return TRUE;
        case WM_NEXTDLGCTL:
            MoveFocus(dialog, wParam, lParam);
            return 0;
        default:
            return DefWindowProcW(dialog.handle, message, wParam, lParam);
    }
}

}  // namespace

HWND NextTabStop(const DialogWindow& dialog, HWND from, bool backwards) {
    std::vector<HWND> stops;
    for (const HWND child : dialog.childWindows) {
        const Window* const control = Screen::Current().Lookup(child);
        if (control == nullptr) continue;
        const bool isStop =
            (control->style & WS_TABSTOP) != 0 && control->IsVisible() && control->IsEnabled();
        if (isStop || child == from) stops.push_back(child);
    }
    if (stops.empty()) return nullptr;
    if (backwards) std::reverse(stops.begin(), stops.end());
    const auto found = std::find(stops.begin(), stops.end(), from);
    return found == stops.end() || found + 1 == stops.end() ? stops.front() : found[1];
}

void FocusByTab(HWND control) {
    if (control == nullptr) return;
    Screen& screen = Screen::Current();
    if ((screen.Deliver(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0)
        screen.Deliver(control, EM_SETSEL, 0, -1);
    screen.SetFocus(control);
}

}  // namespace simulator

LRESULT WINAPI DefDlgProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    using simulator::DialogWindow;
    using simulator::Screen;
    const simulator::OwnWork ownWork;
    auto* dialog = Screen::Current().Lookup<DialogWindow>(handle);
    if (dialog == nullptr) return 0;
    dialog->messageResult = 0;
    INT_PTR handled = 0;
    if (dialog->dialogProcedure != nullptr)
        handled = simulator::CallDialogProcedure(dialog->dialogProcedure, handle, message, wParam, lParam);
    const bool isDirect = simulator::IsAnsweredDirectly(message);
    dialog = Screen::Current().Lookup<DialogWindow>(handle);
    if (dialog == nullptr) return isDirect ? handled : 0;
    if (handled == 0 && !isDirect) return simulator::DefaultResult(*dialog, message, wParam, lParam);
    return isDirect ? handled : dialog->messageResult;
}
