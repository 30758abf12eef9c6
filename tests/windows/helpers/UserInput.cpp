#include "helpers/UserInput.h"

void Type(HWND dialog, int control, const std::wstring& text) {
    const HWND field = GetDlgItem(dialog, control);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, WM_CLEAR, 0, 0);
    for (const WCHAR unit : text)
        SendMessageW(field, WM_CHAR, unit, 1);
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
