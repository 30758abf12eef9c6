/* A dialog that shows one text and tells which command closed it. */
#pragma once

#include "ui/Dialog.h"

class TextDialog : public Dialog {
public:
    /* `control` is the number of the control that shows `textToShow`, which is not translated; 0: none shows
     * it. The Back key keeps the effect that the system gives it. */
    TextDialog(uint32_t id, WideString textToShow, int control, uint32_t menuBar);

    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;

    /* Every menu command and pressed button closes the dialog; other notifications are treated as in
     * Dialog. */
    void OnDialogCommand(int id, HWND control, int notification) override;

    int resultCommand = IDCANCEL; /* what closed the dialog */
    WideString text;
    int textControl;
};

/* Shows a TextDialog. IDOK when the dialog ended with IDOK, otherwise the command that closed it: IDCANCEL
 * when it ended without a command, or could not be shown. Throws as DoModal does. */
int RunTextDialog(uint32_t id, HWND parent, const WideString& text, int control, uint32_t menuBar);
