/* What windows, dialogs, menu bars and menus show to their user. All may be asked from any thread. */
#pragma once

#include "Platform.h"

#include <string>
#include <vector>

/* The top-level windows of a thread that are visible and of that class, the uppermost first. */
std::vector<HWND> WindowsOf(DWORD thread, const std::wstring& windowClass);

std::wstring TextOf(HWND window);

/* The text of a dialog's control. */
std::wstring TextOf(HWND dialog, int control);

/* Whether a check box is ticked. */
bool IsTicked(HWND dialog, int box);

/* The control of the dialog that has the focus; 0: none has. */
int FocusOf(HWND dialog);

/* The dialog's menu bar, or null. */
HWND MenuBarOf(HWND dialog);

/* The texts and the commands of a menu bar's buttons, from left to right. */
std::vector<std::wstring> ButtonTextsOf(HWND bar);
std::vector<int> ButtonCommandsOf(HWND bar);

/* The texts of a menu's items. */
std::vector<std::wstring> ItemTextsOf(HMENU menu);
