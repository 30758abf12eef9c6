/* Makes the menu bars of the stand-in shell library: tool bars at the lower edge of the screen, each made of
 * a menu, an RCDATA resource and texts. A bar is owned by its dialog, so that it is destroyed with the
 * dialog. It is no child, which would be one of the dialog's controls. */
#include "StandInShell.h"

/* A button in the RCDATA resource, after the menu's number and the number of buttons. */
typedef struct ButtonRow {
    WORD image;
    WORD command;
    WORD state;
    WORD style;
    WORD text;
    WORD unused;
    WORD popup; /* index in the menu, or noPopup */
} ButtonRow;

enum { mostButtons = 16 };

static BOOL failing;

void WINAPI StandInMenuBars(BOOL succeed) {
    failing = !succeed;
    ZeroMemory(&shellCalls, sizeof shellCalls);
}

/* The rows of a bar's buttons, and their number; null when the resource is missing, or too short for them. */
static const ButtonRow* FindRows(HINSTANCE module, UINT id, WORD* count) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), (LPCWSTR)RT_RCDATA);
    const HGLOBAL loaded = resource ? LoadResource(module, resource) : NULL;
    const WORD* const words = loaded ? (const WORD*)LockResource(loaded) : NULL;
    const DWORD size = resource ? SizeofResource(module, resource) : 0;
    if (words == NULL || size < 2 * sizeof(WORD)) return NULL;
    *count = words[1];
    if (*count == 0 || *count > mostButtons) return NULL;
    if (size < 2 * sizeof(WORD) + *count * sizeof(ButtonRow)) return NULL;
    return (const ButtonRow*)(words + 2);
}

static BOOL AddButton(HWND bar, HINSTANCE module, const ButtonRow* row) {
    WCHAR text[100];
    TBBUTTON button = {0};
    if (!LoadStringW(module, row->text, text, ARRAYSIZE(text))) return FALSE;
    button.iBitmap = (SHORT)row->image;
    button.idCommand = row->command;
    button.fsState = (BYTE)row->state;
    button.fsStyle = (BYTE)row->style;
    button.dwData = row->popup;
    button.iString = (INT_PTR)text;
    return (BOOL)SendMessageW(bar, TB_ADDBUTTONSW, 1, (LPARAM)&button);
}

static HWND MakeToolbar(HWND dialog) {
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    const RECT area = DialogArea();
    HWND bar;
    InitCommonControlsEx(&classes);
    bar =
        CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, TOOLBARCLASSNAMEW, NULL,
                        WS_POPUP | TBSTYLE_LIST | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER, area.left,
                        area.bottom, area.right - area.left, menuBarHeight, dialog, NULL, NULL, NULL);
    if (bar) SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    return bar;
}

static BOOL AddButtons(HWND bar, HINSTANCE module, UINT id) {
    WORD count = 0;
    WORD i;
    const ButtonRow* const rows = FindRows(module, id, &count);
    if (rows == NULL) return FALSE;
    for (i = 0; i < count; ++i) {
        if (!AddButton(bar, module, &rows[i])) return FALSE;
    }
    return TRUE;
}

static HWND MakeBar(HWND dialog, HINSTANCE module, UINT id) {
    const HMENU menu = LoadMenuW(module, MAKEINTRESOURCEW(id));
    const HWND bar = menu ? MakeToolbar(dialog) : NULL;
    if (bar && AddButtons(bar, module, id) && BindMenuBar(bar, dialog, menu)) return bar;
    if (bar) DestroyWindow(bar);
    if (menu) DestroyMenu(menu);
    return NULL;
}

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info) {
    ++shellCalls.menuBars;
    if (info == NULL) return FALSE;
    shellCalls.menuBar = *info;
    info->hwndMB = NULL;
    if (failing || info->cbSize != sizeof *info || !IsWindow(info->hwndParent)) return FALSE;
    if (info->dwFlags != SHCMBF_HMENU || info->hInstRes == NULL) return FALSE;
    info->hwndMB = MakeBar(info->hwndParent, info->hInstRes, info->nToolBarId);
    if (info->hwndMB) ShowWindow(info->hwndMB, SW_SHOWNOACTIVATE);
    return info->hwndMB != NULL;
}
