/* How the menu bar of the stand-in shell library behaves. */
#include "StandInShell.h"

/* Belongs to its tool bar, which keeps it as a property. */
typedef struct MenuBar {
    HWND dialog;
    HMENU menu;
    WNDPROC toolbarProc;
    HHOOK keyHook;
    BOOL backOverridden;
} MenuBar;

/* Tells a bar to press its button with the index wParam. */
enum { pressMessage = WM_APP };

static const WCHAR barProperty[] = L"OrvandeMenuBar";

/* The bar that belongs to a dialog, which is kept with the dialog under the same name. */
static HWND BarOf(HWND dialog) {
    return (HWND)GetPropW(dialog, barProperty);
}

static MenuBar* StateOf(HWND bar) {
    return (MenuBar*)GetPropW(bar, barProperty);
}

/* Posts the command, because carrying it out may destroy the bar, whose procedure is still running. */
static void SendCommand(const MenuBar* state, int command, HWND source) {
    PostMessageW(state->dialog, WM_COMMAND, MAKEWPARAM(command, 0), (LPARAM)source);
}

/* Lets the user choose from the pop-up of a button. */
static void OpenPopup(HWND bar, const MenuBar* state, int index, int popup) {
    RECT place;
    int command;
    SendMessageW(bar, TB_GETITEMRECT, (WPARAM)index, (LPARAM)&place);
    MapWindowPoints(bar, NULL, (POINT*)&place, 2);
    command = TrackPopupMenu(GetSubMenu(state->menu, popup), TPM_BOTTOMALIGN | TPM_RETURNCMD | TPM_NONOTIFY,
                             place.left, place.top, 0, state->dialog, NULL);
    if (command != 0 && StateOf(bar) == state) SendCommand(state, command, NULL);
}

/* Does what pressing a button does, if both the dialog and the button are enabled. */
static void Press(HWND bar, const MenuBar* state, int index) {
    TBBUTTON button;
    if (!IsWindowEnabled(state->dialog)) return;
    if (!SendMessageW(bar, TB_GETBUTTON, (WPARAM)index, (LPARAM)&button)) return;
    if (!(button.fsState & TBSTATE_ENABLED)) return;
    if (button.dwData != noPopup) {
        OpenPopup(bar, state, index, (int)button.dwData);
    } else {
        SendCommand(state, button.idCommand, bar);
    }
}

static void Release(HWND bar, MenuBar* state) {
    RemovePropW(bar, barProperty);
    if (BarOf(state->dialog) == bar) RemovePropW(state->dialog, barProperty);
    if (state->keyHook) UnhookWindowsHookEx(state->keyHook);
    if (state->menu) DestroyMenu(state->menu);
    HeapFree(GetProcessHeap(), 0, state);
}

/* Changes a button. Like a handheld's bar, this one keeps the button's command whatever it is told. */
static LRESULT SetButton(HWND bar, const MenuBar* state, UINT message, WPARAM command,
                         const TBBUTTONINFOW* asked) {
    TBBUTTONINFOW info = *asked;
    shellCalls.button = info;
    shellCalls.buttonCommand = (int)command;
    ++shellCalls.buttons;
    info.dwMask &= ~(DWORD)TBIF_COMMAND;
    return CallWindowProcW(state->toolbarProc, bar, message, command, (LPARAM)&info);
}

static void OverrideKey(MenuBar* state, WPARAM key, LPARAM flags) {
    const WORD mask = LOWORD(flags);
    ++shellCalls.overrides;
    shellCalls.overriddenKey = key;
    shellCalls.overrideFlags = flags;
    if (key == VK_ESCAPE && (mask & SHMBOF_NOTIFY))
        state->backOverridden = (HIWORD(flags) & SHMBOF_NOTIFY) != 0;
}

static BOOL Erase(HWND bar, HDC canvas) {
    RECT area;
    GetClientRect(bar, &area);
    FillRect(canvas, &area, GetSysColorBrush(COLOR_BTNFACE));
    DrawEdge(canvas, &area, BDR_RAISEDINNER, BF_TOP);
    return TRUE;
}

/* Also gets what the tool bar tells its parent, which is the tool bar itself. */
static LRESULT CALLBACK BarProc(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) {
    MenuBar* const state = StateOf(bar);
    const WNDPROC toolbarProc = state->toolbarProc;
    switch (message) {
        case SHCMBM_GETMENU:
            return (LRESULT)state->menu;
        case SHCMBM_OVERRIDEKEY:
            OverrideKey(state, wParam, lParam);
            return TRUE;
        case TB_SETBUTTONINFOA:
        case TB_SETBUTTONINFOW:
            return SetButton(bar, state, message, wParam, (const TBBUTTONINFOW*)lParam);
        case WM_COMMAND:
            Press(bar, state, (int)SendMessageW(bar, TB_COMMANDTOINDEX, LOWORD(wParam), 0));
            return 0;
        case WM_NOTIFY:
            if (((const NMHDR*)lParam)->code != (UINT)TBN_DROPDOWN) break;
            Press(bar, state,
                  (int)SendMessageW(bar, TB_COMMANDTOINDEX, (WPARAM)((const NMTOOLBARW*)lParam)->iItem, 0));
            return TBDDRET_DEFAULT;
        case pressMessage:
            Press(bar, state, (int)wParam);
            return 0;
        case WM_ERASEBKGND:
            return Erase(bar, (HDC)wParam);
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;  // the focus stays in the dialog
        case WM_NCDESTROY:
            Release(bar, state);
            SetWindowLongPtrW(bar, GWLP_WNDPROC, (LONG_PTR)toolbarProc);
            break;
    }
    return CallWindowProcW(toolbarProc, bar, message, wParam, lParam);
}

/* Keys stand in for the handheld's buttons: F1 and F2 for the soft keys, Escape for Back. */
static BOOL IsButtonOfHandheld(const MSG* message) {
    const HWND dialog = GetAncestor(message->hwnd, GA_ROOT);
    const HWND bar = BarOf(dialog);
    const MenuBar* const state = bar ? StateOf(bar) : NULL;
    if (message->message != WM_KEYDOWN || state == NULL) return FALSE;
    if (message->wParam == VK_ESCAPE && state->backOverridden) {
        PostMessageW(dialog, WM_HOTKEY, 0, MAKELPARAM(0, VK_ESCAPE));
        return TRUE;
    }
    if (message->wParam != VK_F1 && message->wParam != VK_F2) return FALSE;
    PostMessageW(bar, pressMessage, message->wParam - VK_F1, 0);
    return TRUE;
}

/* Sees the messages of the thread's dialogs before they do. */
static LRESULT CALLBACK FilterKeys(int code, WPARAM wParam, LPARAM lParam) {
    if (code == MSGF_DIALOGBOX && IsButtonOfHandheld((const MSG*)lParam)) return TRUE;
    return CallNextHookEx(NULL, code, wParam, lParam);
}

BOOL BindMenuBar(HWND bar, HWND dialog, HMENU menu) {
    MenuBar* const state = (MenuBar*)HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof *state);
    if (state == NULL) return FALSE;
    if (!SetPropW(bar, barProperty, state)) {
        HeapFree(GetProcessHeap(), 0, state);
        return FALSE;
    }
    state->dialog = dialog;
    state->menu = menu;
    state->toolbarProc = (WNDPROC)SetWindowLongPtrW(bar, GWLP_WNDPROC, (LONG_PTR)BarProc);
    state->keyHook = SetWindowsHookExW(WH_MSGFILTER, FilterKeys, NULL, GetCurrentThreadId());
    SetPropW(dialog, barProperty, bar);
    SendMessageW(bar, TB_SETPARENT, (WPARAM)bar, 0);
    return TRUE;
}
