#include "helpers/WindowContents.h"

namespace {

struct WindowSearch {
    const std::wstring& windowClass;
    std::vector<HWND> found;
};

BOOL CALLBACK NoteWindow(HWND window, LPARAM parameter) {
    WindowSearch& search = *reinterpret_cast<WindowSearch*>(parameter);
    WCHAR name[64]{};
    GetClassNameW(window, name, 64);
    if (IsWindowVisible(window) && search.windowClass == name) search.found.push_back(window);
    return TRUE;
}

}  // namespace

std::vector<HWND> WindowsOf(DWORD thread, const std::wstring& windowClass) {
    WindowSearch search{windowClass, {}};
    EnumThreadWindows(thread, NoteWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::wstring TextOf(HWND window) {
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    const LRESULT taken =
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(taken));
    return text;
}

std::wstring TextOf(HWND dialog, int control) {
    return TextOf(GetDlgItem(dialog, control));
}

bool IsTicked(HWND dialog, int box) {
    return SendDlgItemMessageW(dialog, box, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

int FocusOf(HWND dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return info.hwndFocus && IsChild(dialog, info.hwndFocus) ? GetDlgCtrlID(info.hwndFocus) : 0;
}

HWND MenuBarOf(HWND dialog) {
    for (const HWND bar : WindowsOf(GetWindowThreadProcessId(dialog, nullptr), TOOLBARCLASSNAMEW)) {
        if (GetWindow(bar, GW_OWNER) == dialog) return bar;
    }
    return nullptr;
}

std::vector<int> ButtonCommandsOf(HWND bar) {
    std::vector<int> commands;
    const LRESULT count = SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button{};
        SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        commands.push_back(button.idCommand);
    }
    return commands;
}

std::vector<std::wstring> ButtonTextsOf(HWND bar) {
    std::vector<std::wstring> texts;
    for (const int command : ButtonCommandsOf(bar)) {
        WCHAR text[100]{};
        SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(text));
        texts.emplace_back(text);
    }
    return texts;
}

std::vector<std::wstring> ItemTextsOf(HMENU menu) {
    std::vector<std::wstring> texts;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        WCHAR text[100]{};
        GetMenuStringW(menu, static_cast<UINT>(i), text, 100, MF_BYPOSITION);
        texts.emplace_back(text);
    }
    return texts;
}
