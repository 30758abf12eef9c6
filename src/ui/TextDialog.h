/* A dialog that shows one text and tells which command closed it. */
#pragma once

#include "ui/Dialog.h"

class TextDialog : public Dialog {
public:
    /* `control` is the control that shows `textToShow`, in this language already; 0: none does. The Back key
     * acts by itself. */
    TextDialog(uint32_t id, WideString textToShow, int control, uint32_t menuBar);

    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override;

    /* Every menu command and pressed button closes the dialog; other notifications do what a Dialog does. */
    void OnDialogCommand(int id, HWND control, int notification) override;

    int resultCommand = IDCANCEL; /* what closed the dialog */
    WideString text;
    int textControl;
};

/* Shows a TextDialog. IDOK when it ended with that, otherwise the command that closed it: IDCANCEL when it
 * ended without one, or could not be shown. Throws as DoModal does. */
int RunTextDialog(uint32_t id, HWND parent, const WideString& text, int control, uint32_t menuBar);
