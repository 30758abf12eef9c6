/* What a user does with the keys and the stylus. All may be done from any thread. */
#pragma once

#include "Platform.h"

#include <string>

/* Replaces what is in a control, key by key, and leaves the focus there. */
void Type(HWND dialog, int control, const std::wstring& text);

/* Types behind what is in a control. */
void TypeOn(HWND dialog, int control, const std::wstring& text);

/* Sets the text of a control as a paste does, all at once. */
void Put(HWND dialog, int control, const std::wstring& text);

/* One key, in the control that has the focus or in the menu that is open. */
void PressKey(HWND dialog, WORD key);

/* Clicks a dialog's control; returns at once. */
void Click(HWND dialog, int control);

/* Presses a button of a menu bar with the stylus; returns at once. */
void PressButton(HWND bar, int index);
