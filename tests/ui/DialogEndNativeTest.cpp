/* What a dialog leaves to the system, and what it does when its end comes from elsewhere. */
#include "ui/DialogFixture.h"

#include <stdexcept>

namespace {

HWND told = nullptr;

/* Tells the dialog of the end of what it owns. */
LRESULT CALLBACK TellingProc(HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message == WM_DESTROY) SendMessageW(told, WM_APP, 0, 0);
    return 0;
}

class DialogEnd : public DialogOnDevice {};

}  // namespace

TEST_F(DialogEnd, DestroyedWithItsWindowItTakesTheMessagesThatThisBrings) {
    FormDialog shown;
    device.UseDialog([&](DialogUser& user) {
        told = user.Window();
        SetWindowLongPtrW(shown.menuBarWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TellingProc));
        {
            Dialog other(FORM_DIALOG);
            windowBindings.AttachWindow(user.Window(), &other);
            other.window = user.Window();
            shown.window = nullptr;
        }
        EXPECT_FALSE(user.IsOpen());
    });
    EXPECT_EQ(0, shown.DoModal(nullptr));
}

TEST_F(DialogEnd, WhyAWindowWasNotBoundIsKnownAlsoWhenItCannotBeEnded) {
    FormDialog dialog;
    device.FailCall("SetWindowLongPtrW", 1, ERROR_NOT_ENOUGH_MEMORY);
    device.FailCall("EndDialog", 1, ERROR_GEN_FAILURE);
    device.UseDialog([](DialogUser& user) { EndDialog(user.Window(), IDCANCEL); });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(DWORD{ERROR_NOT_ENOUGH_MEMORY}, dialog.failure.cause);
}

TEST_F(DialogEnd, MessageWhoseHandlerThrowsIsLeftToTheSystem) {
    FormDialog dialog;
    dialog.onMessage = [](UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == DM_SETDEFID) throw std::runtime_error("an operation's own");
        return 0;
    };
    device.UseDialog([&](DialogUser& user) {
        ExpectMessage();
        EXPECT_EQ(TRUE, user.Send(DM_SETDEFID, FORM_BUTTON, 0));
    });
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
}

TEST_F(DialogEnd, TemplateThatIsNotThereIsNeitherLoadedNorShown) {
    Dialog dialog(999);
    ExpectMessage();
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_EQ(1u, device.CountCalls("FindResourceW"));
    EXPECT_EQ(0u, device.CountCalls("LoadResource"));
    EXPECT_EQ(0u, device.CountCalls("DialogBoxIndirectParamW"));
}

TEST_F(DialogEnd, LengthOfATextIsAskedForWithoutParameters) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        user.Type(FORM_FIELD, u"four");
        device.ForgetCalls();
        EXPECT_EQ(TEXT("four"), dialog.GetItemText(FORM_FIELD));
        EXPECT_EQ(
            (std::vector<std::string>{"SendDlgItemMessageW(dialog 1, 1101, WM_GETTEXTLENGTH, 0x0, 0x0) = 4"}),
            device.Calls({"SendDlgItemMessageW"}));
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}
