#include "ui/TextDialog.h"

#include <utility>

TextDialog::TextDialog(uint32_t id, WideString textToShow, int control, uint32_t menuBar)
    : Dialog(id), text(std::move(textToShow)), textControl(control) {
    overrideBackKey = false;
    menuBarId = menuBar;
}

BOOL TextDialog::OnInitDialog(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (textControl != 0) SetItemText(textControl, text);
    return TRUE;
}

void TextDialog::OnDialogCommand(int id, HWND control, int notification) {
    if (notification != 0) return Dialog::OnDialogCommand(id, control, notification);
    resultCommand = id;
    OnCancel();
}

int RunTextDialog(uint32_t id, HWND parent, const WideString& text, int control, uint32_t menuBar) {
    TextDialog dialog(id, text, control, menuBar);
    return dialog.DoModal(parent) == IDOK ? IDOK : dialog.resultCommand;
}
