/* Dialogs that cannot be shown, or whose operations throw. */
#include <gmock/gmock.h>

#include <new>

#include "helpers/DialogTest.h"

namespace {

using testing::StartsWith;

class FailingDialogs : public DialogTest {
protected:
    static HICON ErrorIcon() { return LoadIconW(nullptr, IDI_ERROR); }

    /* The box in which a dialog without a result of its own ends. */
    static void TakeFailure(const ScreenUser& user) {
        EXPECT_THAT(user.TakeMessage(L"Internal error").text, StartsWith(L"Dialog 202 failed: err=0x"));
    }

    static void ShowAndFail(Dialog& dialog, const ScreenUser::Script& script) {
        EXPECT_EQ(-1, Show(dialog, [&](const ScreenUser& user) {
            script(user);
            TakeFailure(user);
        }));
        EXPECT_EQ(nullptr, dialog.window);
    }
};

constexpr UINT throwingMessage = WM_APP;

}  // namespace

TEST_F(FailingDialogs, MissingTemplateIsReportedWithTheErrorCode) {
    FormDialog missing(999);
    ScreenUser::Message message{};
    EXPECT_EQ(-1,
              Show(missing, [&](const ScreenUser& user) { message = user.TakeMessage(L"Internal error"); }));
    const std::wstring expected = L"Dialog 999 failed: err=0x716";  // ERROR_RESOURCE_NAME_NOT_FOUND is 1814
    EXPECT_EQ(expected, message.text);
    EXPECT_EQ(ErrorIcon(), message.icon);
    EXPECT_EQ(nullptr, message.owner);
}

TEST_F(FailingDialogs, ReportOfAMissingTemplateIsOwnedByTheParentAndNotTranslated) {
    UseFrench("Internal error\tErreur\nDialog %d failed: err=0x%x\tNon\n");
    FormDialog outer;
    FormDialog missing(999);
    outer.onCommand = [&](int id, HWND, int) {
        if (id != FORM_BUTTON) return;
        EXPECT_EQ(-1, missing.DoModal(outer.window));
    };
    Show(outer, [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(L"A form");
        Click(dialog, FORM_BUTTON);
        const ScreenUser::Message message = user.TakeMessage(L"Internal error");
        EXPECT_EQ(dialog, message.owner);
        EXPECT_THAT(message.text, StartsWith(L"Dialog 999 failed: err=0x"));
        PressButton(MenuBarOf(dialog), 1);
    });
}

TEST_F(FailingDialogs, MenuBarThatCannotBeMadeEndsTheDialog) {
    StandInMenuBars(FALSE);
    FormDialog form;
    bool initialized = false;
    form.onInit = [&] { initialized = true; };
    ShowAndFail(form, [](const ScreenUser& user) {
        const ScreenUser::Message message = user.TakeMessage(L"Internal error");
        EXPECT_EQ(L"Failed to set up toolbar 115", message.text);
        EXPECT_EQ(ErrorIcon(), message.icon);
        EXPECT_NE(nullptr, message.owner);
    });
    EXPECT_FALSE(initialized);
    EXPECT_EQ(nullptr, form.menuBarWindow);
}

TEST_F(FailingDialogs, MenuBarWithoutResourcesEndsTheDialog) {
    FormDialog form;
    form.menuBarId = 4999;
    ShowAndFail(form, [](const ScreenUser& user) {
        EXPECT_EQ(L"Failed to set up toolbar 4999", user.TakeMessage(L"Internal error").text);
    });
}

TEST_F(FailingDialogs, ExceptionAtTheBeginningEndsTheDialog) {
    FormDialog form;
    form.onInit = [] { throw std::bad_alloc(); };
    ShowAndFail(form, [](const ScreenUser&) {});
}

TEST_F(FailingDialogs, ExceptionInACommandEndsTheDialog) {
    FormDialog form;
    form.onCommand = [](int id, HWND, int) {
        if (id == IDOK) throw std::bad_alloc();
    };
    ShowAndFail(form,
                [](const ScreenUser& user) { PressButton(MenuBarOf(user.WaitForDialog(L"A form")), 0); });
}

TEST_F(FailingDialogs, ExceptionInAMessageEndsTheDialog) {
    FormDialog form;
    form.onMessage = [](UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == throwingMessage) throw std::bad_alloc();
        return FALSE;
    };
    ShowAndFail(form, [](const ScreenUser& user) {
        PostMessageW(user.WaitForDialog(L"A form"), throwingMessage, 0, 0);
    });
}

TEST_F(FailingDialogs, ExceptionInTheWindowProcedureEndsTheDialog) {
    FormDialog form;
    form.onWindowMessage = [](UINT message) {
        if (message == throwingMessage) throw std::bad_alloc();
    };
    ShowAndFail(form, [](const ScreenUser& user) {
        PostMessageW(user.WaitForDialog(L"A form"), throwingMessage, 0, 0);
    });
}

TEST_F(FailingDialogs, ExceptionAtTheEndKeepsTheResult) {
    FormDialog form;
    form.onDestroy = [] { throw std::bad_alloc(); };
    EXPECT_EQ(IDCANCEL, Show(form, [](const ScreenUser& user) {
                  PressButton(MenuBarOf(user.WaitForDialog(L"A form")), 1);
              }));
    EXPECT_EQ(nullptr, form.window);
}
