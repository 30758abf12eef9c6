#include "helpers/ScreenUser.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace {

constexpr ULONGLONG longestWait = 10000;  // ms
constexpr DWORD betweenLooks = 5;         // ms
constexpr WCHAR dialogClass[] = L"#32770";
constexpr WCHAR menuClass[] = L"#32768";

/* A caption as the system keeps it. The window itself need not have time to answer. */
std::wstring CaptionOf(HWND dialog) {
    WCHAR caption[256]{};
    InternalGetWindowText(dialog, caption, 256);
    return caption;
}

/* The icon of a message box, or null. */
HICON IconOf(HWND box) {
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0);
        if (icon != 0) return reinterpret_cast<HICON>(icon);
    }
    return nullptr;
}

}  // namespace

ScreenUser::ScreenUser(Script script)
    : thread(GetCurrentThreadId()), finished(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    acting = std::thread([this, script = std::move(script)] { Run(script); });
}

ScreenUser::~ScreenUser() {
    SetEvent(finished);
    acting.join();
    CloseHandle(finished);
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
        // What it does when it is done may wait for somebody else.
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    }
}

void ScreenUser::WaitUntil(const std::string& what, const std::function<bool()>& condition) const {
    const ULONGLONG end = GetTickCount64() + longestWait;
    while (!condition()) {
        if (GetTickCount64() > end) throw std::runtime_error(what + " has not come");
        Sleep(betweenLooks);
    }
}

HWND ScreenUser::FindDialog(const std::wstring& caption) const {
    for (const HWND dialog : WindowsOf(thread, dialogClass)) {
        if (IsWindowEnabled(dialog) && CaptionOf(dialog) == caption) return dialog;
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
