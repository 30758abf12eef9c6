/* What is read of the texts of windows and buttons at the ends of their lengths. */
#include "ui/WindowTranslation.h"

#include <algorithm>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

/* A tool bar of one button, whose text fills all the room that there is, without an end. */
LRESULT CALLBACK EndlessButtonProc(HWND /*window*/, UINT message, WPARAM /*wParam*/, LPARAM lParam) {
    if (message == TB_GETBUTTONINFOW) {
        const auto* const info = reinterpret_cast<TBBUTTONINFOW*>(lParam);
        std::fill_n(info->pszText, info->cchText, TEXT('x'));
    }
    return message == TB_BUTTONCOUNT ? 1 : 0;
}

class WindowText : public ScreenTest {
protected:
    void WithDialog(const std::function<void(FormDialog& dialog)>& operation) {
        FormDialog dialog;
        device.UseDialog([&](DialogUser& user) {
            operation(dialog);
            Cancel(user);
        });
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }
};

}  // namespace

TEST_F(WindowText, OfOneUnitIsTranslated) {
    WithDialog([this](FormDialog& dialog) {
        Translate("X\tAnother\n");
        dialog.SetItemText(FORM_FIELD, TEXT("X"));
        TranslateWindowText(GetDlgItem(dialog.window, FORM_FIELD));
        EXPECT_EQ(TEXT("Another"), dialog.GetItemText(FORM_FIELD));
    });
}

TEST_F(WindowText, OfAButtonEndsAfter254UnitsThoughTheSystemEndsItNowhere) {
    WithDialog([](FormDialog& dialog) {
        const HWND control = GetDlgItem(dialog.window, FORM_FIELD);
        const LONG_PTR before =
            SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(EndlessButtonProc));
        TranslateToolbar(control);
        SetWindowLongPtrW(control, GWLP_WNDPROC, before);
        EXPECT_EQ(1u, translationCatalogue.UntranslatedTexts().count(WideString(254, TEXT('x'))));
    });
}
