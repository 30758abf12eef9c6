#include "helpers/UserInput.h"

namespace {

/* Gives the focus to a control of the dialog. */
HWND FocusedControl(HWND dialog, int control) {
    const HWND field = GetDlgItem(dialog, control);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    return field;
}

void PressKeys(HWND field, const std::wstring& text) {
    for (const WCHAR unit : text)
        SendMessageW(field, WM_CHAR, unit, 1);
}

}  // namespace

void Type(HWND dialog, int control, const std::wstring& text) {
    const HWND field = FocusedControl(dialog, control);
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, WM_CLEAR, 0, 0);
    PressKeys(field, text);
}

void TypeOn(HWND dialog, int control, const std::wstring& text) {
    const HWND field = FocusedControl(dialog, control);
    const LRESULT end = SendMessageW(field, WM_GETTEXTLENGTH, 0, 0);
    SendMessageW(field, EM_SETSEL, static_cast<WPARAM>(end), end);
    PressKeys(field, text);
}

void Put(HWND dialog, int control, const std::wstring& text) {
    SendDlgItemMessageW(dialog, control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void PressKey(HWND dialog, WORD key) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    PostMessageW(info.hwndFocus ? info.hwndFocus : dialog, WM_KEYDOWN, key, 1);
}

void Click(HWND dialog, int control) {
    PostMessageW(GetDlgItem(dialog, control), BM_CLICK, 0, 0);
}

void PressButton(HWND bar, int index) {
    RECT place{};
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(bar, WM_LBUTTONUP, 0, middle);
}
