#pragma once

#include "Platform.h"

#include "screen/DialogTemplate.h"
#include "screen/Screen.h"

namespace simulator {

struct DialogWindow : Window {
    DialogWindow() : Window("dialog") {}

    bool IsRunning() const { return !hasEnded && !isBeingDestroyed; }

    DLGPROC dialogProcedure = nullptr;
    LRESULT messageResult = 0;
    LONG_PTR dialogData = 0;
    INT_PTR result = 0;
    bool hasEnded = false;
    int defaultButton = IDOK;
};

/* The control after `from` (null: the first one) that is a tab stop and can be reached; around the end back
 * to the first. Null when there is none. */
HWND NextTabStop(const DialogWindow& dialog, HWND from, bool backwards);

/* Moves the focus to a control as Tab does: the text of an edit field is selected. */
void FocusByTab(HWND control);

/* Makes a dialog's window and its controls and tells its procedure of the start; null with `error` when that
 * fails, and when the window is destroyed on the way. */
HWND CreateDialogWindow(const DialogTemplate& source, HINSTANCE instance, HWND owner, DLGPROC procedure,
                        LPARAM parameter, DWORD& error);

}  // namespace simulator
