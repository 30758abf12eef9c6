/* The user's part of the device: his answers to message boxes, what he does in dialogs, the cursor. */
#pragma once

#include "Platform.h"

#include <string>
#include <vector>

#include "user/DialogUser.h"
#include "user/ShownDialog.h"

/* A message box that was shown. */
struct ShownMessageBox {
    HWND owner = nullptr;
    std::u16string text;
    std::u16string caption;
    UINT flags = 0;
    int answer = 0;
    std::string ownerName;  // as the journal names it: null, dialog 1, ...
};

class DeviceUser {
public:
    /* What the user presses in the next message box that has no answer yet: IDOK, IDCANCEL, ... A box without
     * an answer, and an answer for which the box has no button, are violations. */
    void AnswerMessageBox(int answer);

    const std::vector<ShownMessageBox>& MessageBoxes() const;

    /* What the user does next in a dialog. When the innermost modal dialog has no message left to handle, the
     * first script that has not run yet is run on it, once; if the dialog is then still open, the next one
     * is. A dialog that finds no script is a violation, and is ended with IDCANCEL; so is a script without a
     * dialog at the end of the test. */
    void UseDialog(DialogScript script);

    /* The dialogs that were shown, in the order in which they finished WM_INITDIALOG. */
    const std::vector<ShownDialog>& Dialogs() const;

    /* The cursor now in force; a new machine shows the normal one. */
    HCURSOR CurrentCursor() const;
    HCURSOR NormalCursor() const;
    HCURSOR WaitCursor() const;

protected:
    void BeginTest();
    void EndTest();
};
