/* Stands in for the handheld's shell library where there is none: desktop Windows and Wine. */
#include "StandInShell.h"

StandInShellRecord shellCalls;

/* The desktop has no controls of the handheld's shell to prepare. */
BOOL WINAPI SHInitExtraControls(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    (void)instance;
    (void)reason;
    (void)reserved;
    ++shellCalls.initialized;
    return TRUE;
}

RECT DialogArea(void) {
    RECT area = {0, 0, 0, 0};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    area.bottom -= menuBarHeight;
    return area;
}

BOOL WINAPI SHInitDialog(PSHINITDLGINFO info) {
    ++shellCalls.dialogs;
    if (info == NULL) return FALSE;
    shellCalls.dialog = *info;
    if (info->dwMask != SHIDIM_FLAGS || !IsWindow(info->hDlg)) return FALSE;
    if (info->dwFlags & SHIDIF_SIZEDLGFULLSCREEN) {
        const RECT area = DialogArea();
        SetWindowPos(info->hDlg, NULL, area.left, area.top, area.right - area.left, area.bottom - area.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return TRUE;
}

/* The control gets what a keyboard's Backspace key would send, even if there is no keyboard. */
void WINAPI SHSendBackToFocusWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND focus = GetFocus();
    ++shellCalls.backs;
    shellCalls.backMessage = message;
    shellCalls.backWParam = wParam;
    shellCalls.backLParam = lParam;
    if (focus == NULL) return;
    SendMessageW(focus, WM_KEYDOWN, VK_BACK, 1);
    SendMessageW(focus, WM_CHAR, VK_BACK, 1);
    SendMessageW(focus, WM_KEYUP, VK_BACK, (LPARAM)0xC0000001);
}

void WINAPI StandInShellCalls(StandInShellRecord* record) {
    *record = shellCalls;
}
