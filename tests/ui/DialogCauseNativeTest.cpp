#include "ui/DialogFixture.h"

#include <new>

namespace {

class DialogCause : public DialogOnDevice {};

}  // namespace

TEST_F(DialogCause, EachTimeItIsTheFirstFailureThoughItsBoxCannotBeShown) {
    FormDialog dialog;
    for (const DWORD error : {DWORD{ERROR_RESOURCE_TYPE_NOT_FOUND}, DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}}) {
        device.FailCall("FindResourceW", 1, error);
        device.FailCall("MessageBoxW", 1, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_EQ(-1, dialog.DoModal(nullptr));
        EXPECT_EQ(error, GetLastError());
        EXPECT_EQ(error, dialog.failure.cause);
    }
}

TEST_F(DialogCause, OnlyTheBackKeyGoesToTheFocusedControl) {
    FormDialog dialog;
    size_t count = 0;
    dialog.onMessage = [&](UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_HOTKEY) ++count;
        return 0;
    };
    device.UseDialog([&](DialogUser& user) {
        user.Send(WM_HOTKEY, 0, MAKELPARAM(0, VK_F1));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(1u, count);
    EXPECT_EQ(0u, device.CountCalls("SHSendBackToFocusWindow"));
}

TEST_F(DialogCause, HandlerThatThrowsIsAWantOfMemory) {
    FormDialog dialog;
    dialog.onWindowMessage = [](UINT message) {
        if (message != WM_APP) return;
        SetLastError(ERROR_INVALID_HANDLE);
        throw std::bad_alloc();
    };
    device.UseDialog([](DialogUser& user) { user.Send(WM_APP, 0, 0); });
    device.AnswerMessageBox(IDOK);
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, dialog.failure.cause);
    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, GetLastError());
}
