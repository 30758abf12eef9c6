#include "helpers/ScreenUser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

constexpr ULONGLONG longestWait = 10000;  // ms
constexpr WCHAR dialogClass[] = L"#32770";
constexpr WCHAR menuClass[] = L"#32768";

/* Signalled whenever the user's thread of windows has handled a message. */
HANDLE handled = nullptr;

template <int hook>
LRESULT CALLBACK NoteMessage(int code, WPARAM wParam, LPARAM lParam) {
    SetEvent(handled);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

/* The icon of a message box, or null. */
HICON IconOf(HWND box) {
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0);
        if (icon != 0) return reinterpret_cast<HICON>(icon);
    }
    return nullptr;
}

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

ScreenUser::ScreenUser(Script script)
    : thread(GetCurrentThreadId()),
      finished(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      hooks{SetWindowsHookExW(WH_CALLWNDPROCRET, NoteMessage<WH_CALLWNDPROCRET>, nullptr, thread),
            SetWindowsHookExW(WH_GETMESSAGE, NoteMessage<WH_GETMESSAGE>, nullptr, thread)} {
    handled = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    acting = std::thread([this, script = std::move(script)] { Run(script); });
}

ScreenUser::~ScreenUser() {
    SetEvent(finished);
    acting.join();
    for (const HHOOK hook : hooks)
        UnhookWindowsHookEx(hook);
    CloseHandle(finished);
    CloseHandle(std::exchange(handled, nullptr));
}

void ScreenUser::Run(const Script& script) {
    try {
        script(*this);
        if (WaitForSingleObject(finished, longestWait) == WAIT_OBJECT_0) return;
        ADD_FAILURE() << "the script has left a dialog open";
    } catch (const std::exception& failure) {
        ADD_FAILURE() << failure.what();
    }
    while (WaitForSingleObject(finished, 50) == WAIT_TIMEOUT)
        CloseWhatIsLeft();
}

void ScreenUser::CloseWhatIsLeft() const {
    for (const HWND menu : WindowsOf(thread, menuClass))
        PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
    for (const HWND dialog : WindowsOf(thread, dialogClass)) {
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
}

void ScreenUser::WaitUntil(const std::string& what, const std::function<bool()>& condition) const {
    const ULONGLONG end = GetTickCount64() + longestWait;
    while (!condition()) {
        if (GetTickCount64() > end) throw std::runtime_error(what + " has not come");
        // Not everything that changes comes with a message.
        WaitForSingleObject(handled, 50);
    }
}

HWND ScreenUser::FindDialog(const std::wstring& caption) const {
    for (const HWND dialog : WindowsOf(thread, dialogClass)) {
        if (TextOf(dialog) == caption && IsWindowEnabled(dialog)) return dialog;
    }
    return nullptr;
}

HWND ScreenUser::WaitForDialog(const std::wstring& caption) const {
    HWND dialog = nullptr;
    WaitUntil("the dialog " + std::string(caption.begin(), caption.end()), [&] {
        dialog = FindDialog(caption);
        return dialog != nullptr;
    });
    // It is answered once the dialog waits for its user.
    DWORD_PTR ignored = 0;
    SendMessageTimeoutW(dialog, WM_NULL, 0, 0, SMTO_NORMAL, longestWait, &ignored);
    return dialog;
}

HMENU ScreenUser::WaitForMenu() const {
    std::vector<HWND> menus;
    WaitUntil("a menu", [&] {
        menus = WindowsOf(thread, menuClass);
        return !menus.empty();
    });
    constexpr UINT getMenu = 0x01E1;  // MN_GETHMENU
    return reinterpret_cast<HMENU>(SendMessageW(menus.front(), getMenu, 0, 0));
}

ScreenUser::Message ScreenUser::ReadMessage(const std::wstring& caption) const {
    constexpr int textControl = 0xFFFF;
    const HWND box = WaitForDialog(caption);
    return {box, TextOf(box, textControl), IconOf(box), GetWindow(box, GW_OWNER)};
}

ScreenUser::Message ScreenUser::TakeMessage(const std::wstring& caption) const {
    Message message = ReadMessage(caption);
    PostMessageW(message.box, WM_COMMAND, IDOK, 0);
    WaitUntil("the end of the box", [&] { return !IsWindow(message.box); });
    return message;
}

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

void Type(HWND dialog, int control, const std::wstring& text) {
    const HWND field = GetDlgItem(dialog, control);
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, WM_CLEAR, 0, 0);
    for (const WCHAR unit : text)
        SendMessageW(field, WM_CHAR, unit, 1);
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

void PressButton(HWND bar, int index) {
    RECT place{};
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(bar, WM_LBUTTONUP, 0, middle);
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
