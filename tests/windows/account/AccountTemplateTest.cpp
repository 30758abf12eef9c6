/* The account's dialogs, control by control: as the resources have them, and as the system makes them. */
#include "account/AccountScreenTest.h"
#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "helpers/DialogTemplate.h"

namespace {

using namespace account_texts;

constexpr int none = 0xFFFF;
constexpr WORD buttonClass = 0x80;
constexpr WORD editClass = 0x81;
constexpr WORD staticClass = 0x82;

constexpr DWORD shown = WS_CHILD | WS_VISIBLE;
constexpr DWORD label = shown | WS_GROUP | SS_LEFT;
constexpr DWORD field = shown | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD secretField = field | ES_PASSWORD;
constexpr DWORD box = shown | BS_AUTOCHECKBOX;

struct Expected {
    int id;
    WORD systemClass;
    const WCHAR* windowClass;
    DWORD style;
    const WCHAR* text;
    int x, y, width, height;
};

const std::vector<Expected> signInControls = {
    {none, staticClass, L"Static", label, L"New Users:", 1, 2, 67, 8},
    {none, staticClass, L"Static", label, L"Select Menu / New Account", 4, 10, 93, 8},
    {none, staticClass, L"Static", label, L"If you already have an account:", 1, 23, 94, 17},
    {none, staticClass, L"Static", label, L"User ID", 2, 43, 35, 8},
    {1001, editClass, L"Edit", field, L"", 43, 41, 54, 12},
    {none, staticClass, L"Static", label, L"Password", 0, 60, 37, 8},
    {1003, editClass, L"Edit", secretField, L"", 43, 58, 54, 12},
    {1017, buttonClass, L"Button", box | WS_TABSTOP, L"Save password", 34, 75, 65, 10},
};

const std::vector<Expected> creationControls = {
    {none, staticClass, L"Static", label, L"User ID", 0, 4, 35, 8},
    {1001, editClass, L"Edit", field, L"", 38, 2, 57, 12},
    {none, staticClass, L"Static", label, L"Password", 0, 20, 35, 8},
    {1003, editClass, L"Edit", secretField, L"", 38, 18, 57, 12},
    {none, staticClass, L"Static", label, L"Retype", 4, 36, 31, 8},
    {1005, editClass, L"Edit", secretField, L"", 38, 34, 57, 12},
    {none, staticClass, L"Static", label, L"Your name", 0, 52, 36, 8},
    {1006, editClass, L"Edit", field, L"", 38, 50, 57, 12},
    {none, staticClass, L"Static", label, L"Email", 0, 68, 32, 8},
    {1010, editClass, L"Edit", field, L"", 38, 66, 57, 12},
    {1012, buttonClass, L"Button", box, L"Email product update info", 3, 81, 94, 10},
};

class AccountTemplates : public AccountScreenTest {
protected:
    static void ExpectTemplate(HMODULE module, WORD id, const WCHAR* caption, int width, int height,
                               const std::vector<Expected>& controls) {
        const DialogTemplate read = ReadDialogTemplate(module, id);
        EXPECT_EQ(caption, read.caption);
        EXPECT_EQ(width, read.width);
        EXPECT_EQ(height, read.height);
        EXPECT_EQ(L"", read.menu);
        EXPECT_EQ(DWORD{WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_SETFONT}, read.style);
        ASSERT_EQ(controls.size(), read.controls.size());
        for (size_t i = 0; i < controls.size(); ++i)
            ExpectControl(controls[i], read.controls[i]);
    }

    static void ExpectControl(const Expected& expected, const TemplateControl& control) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(expected.text)) + " " + std::to_string(expected.id));
        EXPECT_EQ(expected.id, control.id);
        EXPECT_EQ(expected.systemClass, control.systemClass);
        EXPECT_EQ(expected.style, control.style);
        EXPECT_EQ(expected.text, control.text);
        EXPECT_EQ(expected.x, control.x);
        EXPECT_EQ(expected.y, control.y);
        EXPECT_EQ(expected.width, control.width);
        EXPECT_EQ(expected.height, control.height);
    }

    /* The dialog's children are the controls, in their order. */
    static void ExpectLive(HWND dialog, const std::vector<Expected>& controls) {
        HWND child = GetWindow(dialog, GW_CHILD);
        for (const Expected& expected : controls) {
            SCOPED_TRACE(testing::PrintToString(std::wstring(expected.text)) + " " +
                         std::to_string(expected.id));
            ASSERT_NE(nullptr, child);
            ExpectLiveControl(dialog, expected, child);
            child = GetWindow(child, GW_HWNDNEXT);
        }
        EXPECT_EQ(nullptr, child);
    }

    static void ExpectLiveControl(HWND dialog, const Expected& expected, HWND control) {
        WCHAR windowClass[32]{};
        GetClassNameW(control, windowClass, 32);
        EXPECT_STREQ(expected.windowClass, windowClass);
        EXPECT_EQ(expected.id, GetDlgCtrlID(control) & 0xFFFF);
        EXPECT_EQ(expected.text, TextOf(control));
        // An edit control turns its border into one of the extended styles.
        constexpr DWORD turned = WS_BORDER;
        EXPECT_EQ(expected.style & ~turned, static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE)) & ~turned);
        // Position and size are rounded to pixels each by itself.
        RECT pixels{expected.x, expected.y, expected.width, expected.height};
        MapDialogRect(dialog, &pixels);
        RECT live{};
        GetWindowRect(control, &live);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&live), 2);
        EXPECT_EQ(pixels.left, live.left);
        EXPECT_EQ(pixels.top, live.top);
        EXPECT_EQ(pixels.right, live.right - live.left);
        EXPECT_EQ(pixels.bottom, live.bottom - live.top);
    }
};

}  // namespace

TEST_F(AccountTemplates, AreTheSameInTheProgramAndInTheDll) {
    const HMODULE dll = LoadLibraryExW(L"OrvandeOnline.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(nullptr, dll);
    for (const HMODULE module : {GetModuleHandleW(nullptr), dll}) {
        ExpectTemplate(module, 107, signInCaption, 100, 90, signInControls);
        ExpectTemplate(module, 108, creationCaption, 97, 97, creationControls);
    }
    FreeLibrary(dll);
}

TEST_F(AccountTemplates, SignInDialogHasItsControlsInTheirPlaces) {
    SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        ExpectLive(dialog, signInControls);
        ChooseCancel(user, dialog);
    });
}

TEST_F(AccountTemplates, CreationDialogHasItsControlsInTheirPlaces) {
    Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        ExpectLive(dialog, creationControls);
        PressCancel(dialog);
    });
}

TEST_F(AccountTemplates, TabGoesFromFieldToFieldAndPassesTheBoxForNews) {
    Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        for (const int next : {PASSWORD_FIELD, RETYPE_FIELD, NAME_FIELD, EMAIL_FIELD, USER_ID_FIELD}) {
            PressKey(dialog, VK_TAB);
            user.WaitUntil("the next field", [&] { return FocusOf(dialog) == next; });
        }
        PressCancel(dialog);
    });
}

TEST_F(AccountTemplates, TabReachesTheBoxForThePassword) {
    SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(signInCaption);
        for (const int next : {PASSWORD_FIELD, SAVE_PASSWORD_BOX, USER_ID_FIELD}) {
            PressKey(dialog, VK_TAB);
            user.WaitUntil("the next control", [&] { return FocusOf(dialog) == next; });
        }
        ChooseCancel(user, dialog);
    });
}

TEST_F(AccountTemplates, PasswordsAreHidden) {
    Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(creationCaption);
        for (const int secret : {PASSWORD_FIELD, RETYPE_FIELD})
            EXPECT_NE(0, SendDlgItemMessageW(dialog, secret, EM_GETPASSWORDCHAR, 0, 0));
        for (const int open : {USER_ID_FIELD, NAME_FIELD, EMAIL_FIELD})
            EXPECT_EQ(0, SendDlgItemMessageW(dialog, open, EM_GETPASSWORDCHAR, 0, 0));
        PressCancel(dialog);
    });
}
