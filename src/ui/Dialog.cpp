#include "ui/Dialog.h"

#include <algorithm>

#include "base/Contained.h"
#include "base/Trace.h"
#include "frame/ResourceModule.h"
#include "text/FormatString.h"
#include "ui/WindowTranslation.h"

namespace {

constexpr int notShown = -1;

/* Shows `text` as it is: the translation may be what has failed. */
void ShowInternalError(HWND owner, const WideString& text) {
    MessageBoxW(owner, text.c_str(), TEXT("Internal error"), MB_ICONHAND);
}

/* Null when `module` has no such template, or is null because it could not be loaded. */
const DLGTEMPLATE* LoadTemplate(HINSTANCE module, uint32_t id) {
    if (module == nullptr) return nullptr;
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(LOWORD(id)), RT_DIALOG);
    if (resource == nullptr) return nullptr;
    return static_cast<const DLGTEMPLATE*>(LoadResource(module, resource));
}

}  // namespace

Dialog::~Dialog() {
    DestroyLiveWindow();
}

int Dialog::DoModal(HWND parent) {
    if (templateId == 0) return IDCANCEL;
    failure = {};
    if constexpr (isTraced) Trace(TEXT("dialog begins"), nullptr, templateId, 0);
    const int result = Run(parent);
    if constexpr (isTraced) TraceCall(TEXT("dialog ends"), nullptr, result, result != notShown);
    if (result != notShown) return result;
    const DWORD error = GetLastError();
    failure.NoteFailedCall();
    ShowInternalError(parent, FormatString(TEXT("Dialog %d failed: err=0x%x"), templateId, error));
    SetLastError(failure.cause);
    return notShown;
}

int Dialog::Run(HWND parent) {
    menuBarWindow = nullptr;
    commandMenu = nullptr;
    const HINSTANCE module = GetResourceModule(templateId);
    const DLGTEMPLATE* const dialogTemplate = LoadTemplate(module, templateId);
    if (dialogTemplate == nullptr) return notShown;
    return static_cast<int>(
        DialogBoxIndirectParamW(module, dialogTemplate, parent, DialogProc, reinterpret_cast<LPARAM>(this)));
}

INT_PTR CALLBACK Dialog::DialogProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const created = message == WM_INITDIALOG ? reinterpret_cast<Dialog*>(lParam) : nullptr;
    if (created != nullptr && !created->Bind(handle)) {
        created->failure.NoteFailedCall();
        EndDialog(handle, notShown);
        return FALSE;
    }
    // Only windows of dialogs have this procedure.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-static-cast-downcast)
    auto* const dialog = static_cast<Dialog*>(windowBindings.FindWindowObject(handle));
    if (dialog == nullptr) return 0;
    INT_PTR result = 0;
    if (!RunContained([&] { result = dialog->Dispatch(message, wParam, lParam); })) {
        dialog->failure.Note(ERROR_NOT_ENOUGH_MEMORY);
        EndDialog(handle, notShown);
    }
    return result;
}

bool Dialog::Bind(HWND handle) {
    window = handle;
    windowBindings.AttachWindow(handle, this);
    if (windowBindings.FindWindowObject(handle) == this) return true;
    window = nullptr;
    return false;
}

INT_PTR Dialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            return Prepare(wParam, lParam);
        case WM_COMMAND:
            OnDialogCommand(LOWORD(wParam), reinterpret_cast<HWND>(lParam), HIWORD(wParam));
            return TRUE;
        case WM_NOTIFY:
            OnDialogNotify(wParam, lParam);
            return TRUE;
        case WM_HOTKEY:
            if (HIWORD(lParam) != VK_ESCAPE) break;
            SHSendBackToFocusWindow(message, wParam, lParam);
            return TRUE;
        default:
            break;
    }
    return OnMessage(message, wParam, lParam);
}

BOOL Dialog::Prepare(WPARAM wParam, LPARAM lParam) {
    TranslateWindowTree(window);
    SetCursor(nullptr);
    SHINITDLGINFO info{SHIDIM_FLAGS, window, initFlags};
    SHInitDialog(&info);
    if (menuBarId != 0) {
        if (!CreateMenuBar()) {
            failure.NoteFailedCall();
            ShowInternalError(window, FormatString(TEXT("Failed to set up toolbar %d"), menuBarId));
            DestroyWindow(window);
            return FALSE;
        }
        PrepareMenuBar();
    }
    return OnInitDialog(wParam, lParam);
}

bool Dialog::CreateMenuBar() {
    SHMENUBARINFO info{};
    info.cbSize = sizeof(info);
    info.hwndParent = window;
    info.dwFlags = SHCMBF_HMENU;
    info.nToolBarId = menuBarId;
    info.hInstRes = GetResourceModule(menuBarId);
    if (!SHCreateMenuBar(&info)) return false;
    menuBarWindow = info.hwndMB;
    return true;
}

void Dialog::PrepareMenuBar() {
    TranslateToolbar(menuBarWindow);
    if (overrideBackKey) {
        constexpr WORD flags = SHMBOF_NODEFAULT | SHMBOF_NOTIFY;
        SendMessageW(menuBarWindow, SHCMBM_OVERRIDEKEY, VK_ESCAPE, MAKELPARAM(flags, flags));
    }
    commandMenu = reinterpret_cast<HMENU>(SendMessageW(menuBarWindow, SHCMBM_GETMENU, 0, 0));
    TranslateMenu(commandMenu);
}

void Dialog::OnOK() {
    EndDialog(window, IDOK);
}

void Dialog::OnCancel() {
    EndDialog(window, IDCANCEL);
}

void Dialog::OnDialogCommand(int id, HWND /*control*/, int /*notification*/) {
    if (id == IDOK) OnOK();
    if (id == IDCANCEL) OnCancel();
}

void Dialog::SetItemText(int id, const WideString& text) {
    SetWindowTextW(GetDlgItem(window, id), text.c_str());
}

WideString Dialog::GetItemText(int id) const {
    const LRESULT length = SendDlgItemMessageW(window, id, WM_GETTEXTLENGTH, 0, 0);
    WideString text(static_cast<size_t>(std::max<LRESULT>(length, 0)) + 1, 0);
    GetDlgItemTextW(window, id, text.data(), static_cast<int>(text.size()));
    text.resize(WideString::traits_type::length(text.c_str()));
    return text;
}

void Dialog::LimitItemTexts(std::initializer_list<int> ids, int units) const {
    for (const int id : ids)
        SendDlgItemMessageW(window, id, EM_LIMITTEXT, static_cast<WPARAM>(units), 0);
}

void Dialog::SetMenuBarButtonText(int command, const WideString& text) {
    if (menuBarWindow == nullptr) return;
    TBBUTTONINFOW info{};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT;
    // The text is only read.
    info.pszText = const_cast<WCHAR*>(text.c_str());
    SendMessageW(menuBarWindow, TB_SETBUTTONINFOW, static_cast<WPARAM>(command),
                 reinterpret_cast<LPARAM>(&info));
}
