/* Calls to windows, dialogs and menus that are made to fail, and memory that runs out in between. */
#include <cstddef>
#include <memory>
#include <new>

#include "DialogTest.h"

namespace {

class ScreenFailures : public DialogTest {
protected:
    /* Expects that `call` fails when its function is made to, with the error, and that nothing else does. */
    template <class Fails>
    void Expect(const char* function, const Fails& fails) {
        device.FailCall(function, 1, 1234);
        EXPECT_TRUE(fails()) << function;
        EXPECT_EQ(1234u, GetLastError()) << function;
        EXPECT_EQ(++failed_, device.FailedCalls()) << function;
    }

private:
    size_t failed_ = 0;
};

/* Whether the allocation in it succeeded; a library's procedure would say so. */
bool allocated = false;

INT_PTR CALLBACK AllocatingProcedure(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG) return 0;
    const std::unique_ptr<int> block(new (std::nothrow) int);
    allocated = block != nullptr;
    EndDialog(dialog, 5);
    return TRUE;
}

const DLGTEMPLATE* SampleTemplate() {
    const HINSTANCE library = Device::Current().LibraryInstance();
    return static_cast<const DLGTEMPLATE*>(
        LoadResource(library, FindResourceW(library, MAKEINTRESOURCEW(100), RT_DIALOG)));
}

}  // namespace

TEST_F(ScreenFailures, EachFunctionOfWindowsFailsInItsOwnWay) {
    const HWND window =
        CreateWindowExW(0, u"edit", u"Text", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    WCHAR text[10] = u"?";
    RECT place{};
    Expect("CreateWindowExW", [] {
        return CreateWindowExW(0, u"edit", u"", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr) == nullptr;
    });
    Expect("GetWindowTextW", [&] { return GetWindowTextW(window, text, 10) == 0 && text[0] == 0; });
    Expect("GetWindowTextLengthW", [&] { return GetWindowTextLengthW(window) == 0; });
    Expect("SetWindowTextW", [&] { return !SetWindowTextW(window, u"Other"); });
    Expect("GetDlgItem", [&] { return GetDlgItem(window, 1) == nullptr; });
    Expect("GetDlgItemTextW", [&] { return GetDlgItemTextW(window, 1, text, 10) == 0; });
    Expect("SetDlgItemTextW", [&] { return !SetDlgItemTextW(window, 1, u""); });
    Expect("GetDlgCtrlID", [&] { return GetDlgCtrlID(window) == 0; });
    Expect("GetWindow", [&] { return GetWindow(window, GW_HWNDFIRST) == nullptr; });
    Expect("GetParent", [&] { return GetParent(window) == nullptr; });
    Expect("GetWindowLongPtrW", [&] { return GetWindowLongPtrW(window, GWL_STYLE) == 0; });
    Expect("SetWindowLongPtrW", [&] { return SetWindowLongPtrW(window, GWL_STYLE, 0) == 0; });
    Expect("CallWindowProcW",
           [&] { return CallWindowProcW(DefWindowProcW, window, WM_GETTEXTLENGTH, 0, 0) == 0; });
    Expect("SendMessageW", [&] { return SendMessageW(window, WM_GETTEXTLENGTH, 0, 0) == 0; });
    Expect("SendDlgItemMessageW", [&] { return SendDlgItemMessageW(window, 1, WM_CLOSE, 0, 0) == 0; });
    Expect("PostMessageW", [&] { return !PostMessageW(window, WM_CLOSE, 0, 0); });
    Expect("SetFocus", [&] { return SetFocus(window) == nullptr && GetFocus() == nullptr; });
    Expect("GetFocus", [&] { return GetFocus() == nullptr; });
    Expect("EnableWindow", [&] { return !EnableWindow(window, FALSE); });
    Expect("IsWindowEnabled", [&] { return !IsWindowEnabled(window); });
    Expect("ShowWindow", [&] { return !ShowWindow(window, SW_HIDE); });
    Expect("IsWindowVisible", [&] { return !IsWindowVisible(window); });
    Expect("GetWindowRect", [&] { return !GetWindowRect(window, &place); });
    Expect("GetClientRect", [&] { return !GetClientRect(window, &place); });
    Expect("IsWindow", [&] { return !IsWindow(window); });
    Expect("DestroyWindow", [&] { return !DestroyWindow(window); });
    EXPECT_TRUE(IsWindowEnabled(window) && IsWindowVisible(window));
    EXPECT_EQ(4, GetWindowTextW(window, text, 10)) << "what failed changed nothing";
    EXPECT_TRUE(DestroyWindow(window));
}

TEST_F(ScreenFailures, EachFunctionOfMenusFailsInItsOwnWay) {
    const HMENU menu = CreateMenu();
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    Expect("CreateMenu", [] { return CreateMenu() == nullptr; });
    Expect("CreatePopupMenu", [] { return CreatePopupMenu() == nullptr; });
    Expect("AppendMenuW", [&] { return !AppendMenuW(menu, MF_STRING, 1, u"Item"); });
    EXPECT_FALSE(GetMenuItemInfoW(menu, 0, TRUE, &info));
    AppendMenuW(menu, MF_STRING, 1, u"Item");
    Expect("GetMenuItemInfoW", [&] { return !GetMenuItemInfoW(menu, 0, TRUE, &info); });
    Expect("SetMenuItemInfoW", [&] { return !SetMenuItemInfoW(menu, 0, TRUE, &info); });
    Expect("GetSubMenu", [&] { return GetSubMenu(menu, 0) == nullptr; });
    Expect("DestroyMenu", [&] { return !DestroyMenu(menu); });
}

TEST_F(ScreenFailures, EachFunctionOfResourcesFailsInItsOwnWay) {
    const HINSTANCE library = device.LibraryInstance();
    WCHAR text[10];
    Expect("FindResourceW",
           [&] { return FindResourceW(library, MAKEINTRESOURCEW(100), RT_DIALOG) == nullptr; });
    const HRSRC resource = FindResourceW(library, MAKEINTRESOURCEW(100), RT_DIALOG);
    Expect("LoadResource", [&] { return LoadResource(library, resource) == nullptr; });
    Expect("LockResource", [&] { return LockResource(LoadResource(library, resource)) == nullptr; });
    Expect("SizeofResource", [&] { return SizeofResource(library, resource) == 0; });
    Expect("LoadStringW", [&] { return LoadStringW(library, 2000, text, 10) == 0; });
}

TEST_F(ScreenFailures, EachFunctionOfDialogsFailsInItsOwnWay) {
    SampleDialog dialog;
    dialog.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) {
        SHINITDLGINFO info{SHIDIM_FLAGS, window, 0};
        Expect("SHInitDialog", [&] { return !SHInitDialog(&info); });
        Expect("SHCreateMenuBar", [&] { return SampleDialog::MakeBar(window, 115) == nullptr; });
        Expect("EndDialog", [&] { return !EndDialog(window, 5); });
        return TRUE;
    });
    User([&](DialogUser& user) {
        EXPECT_TRUE(user.MenuBar().empty());
        user.Type(1001, u"ab");
        device.FailCall("SHSendBackToFocusWindow", 1, 1234);
        SHSendBackToFocusWindow(WM_HOTKEY, 0, 0);
        EXPECT_EQ(u"ab", user.Text(1001));
        Cancel(user);
    });
    dialog.Run();
    device.FailCall("DialogBoxIndirectParamW", 1, 1234);
    EXPECT_EQ(-1, dialog.Run());
    EXPECT_EQ(1234u, GetLastError());
    EXPECT_EQ(1u, device.Dialogs().size());
}

TEST_F(ScreenFailures, WhatTheScreenAllocatesDoesNotCount) {
    const DLGTEMPLATE* const source = SampleTemplate();
    const HINSTANCE library = device.LibraryInstance();
    WCHAR text[100];
    AllocationWatch watch;
    const HWND window = CreateWindowExW(0, u"edit", u"A text that is longer than short", 0, 0, 0, 9, 9,
                                        nullptr, nullptr, nullptr, nullptr);
    SetWindowTextW(window, u"Another text that is longer than a short string");
    GetWindowTextW(window, text, 100);
    SendMessageW(window, WM_CHAR, u'!', 0);
    DestroyWindow(window);
    const HMENU menu = CreateMenu();
    AppendMenuW(menu, MF_STRING, 1, u"An item with a text that is long enough");
    DestroyMenu(menu);
    LoadStringW(library, 2015, text, 100);
    DialogBoxIndirectParamW(library, source, nullptr, nullptr, 0);
    watch.Stop();
    EXPECT_EQ(0u, watch.Count());
    EXPECT_EQ(Lines{"the user has no script for dialog 1"}, TakeViolations());
}

TEST_F(ScreenFailures, WhatAProcedureAllocatesCountsAlsoInsideOfACall) {
    const DLGTEMPLATE* const source = SampleTemplate();
    const HINSTANCE library = device.LibraryInstance();
    {
        AllocationWatch watch;
        EXPECT_EQ(5, DialogBoxIndirectParamW(library, source, nullptr, AllocatingProcedure, 0));
        EXPECT_EQ(1u, watch.Count());
    }
    EXPECT_TRUE(allocated);
    AllocationWatch watch(1);
    DialogBoxIndirectParamW(library, source, nullptr, AllocatingProcedure, 0);
    EXPECT_TRUE(watch.Failed());
    watch.Stop();
    EXPECT_FALSE(allocated);
}

TEST_F(ScreenFailures, WhatTheUserAllocatesDoesNotCount) {
    SampleDialog dialog;
    std::u16string seen;
    User([&](DialogUser& user) {
        seen = user.Caption() + u" and some more text that needs memory";
        user.Type(1001, std::u16string(100, u'x'));
        EndDialog(user.Window(), 7);
    });
    const DLGTEMPLATE* const source = SampleTemplate();
    const HINSTANCE library = device.LibraryInstance();
    AllocationWatch watch(1, Failing::FromThereOn);
    const INT_PTR result = DialogBoxIndirectParamW(library, source, nullptr, nullptr, 0);
    watch.Stop();
    EXPECT_EQ(7, result);
    EXPECT_EQ(0u, watch.Count());
    EXPECT_EQ(u"All kinds and some more text that needs memory", seen);
}

TEST_F(ScreenFailures, WatchInAScriptCountsTheLibraryAlone) {
    User([&](DialogUser& user) {
        AllocationWatch watch;
        const std::string own(1000, 'x');
        user.Type(1001, u"a");
        EXPECT_EQ(0u, watch.Count());
        watch.Stop();
        EndDialog(user.Window(), 1);
    });
    DialogBoxIndirectParamW(device.LibraryInstance(), SampleTemplate(), nullptr, nullptr, 0);
    AllocationWatch watch;
    ::operator delete(::operator new(1));
    EXPECT_EQ(1u, watch.Count()) << "the simulator is not at work any more";
}
