/* What the parts of the stand-in shell library share. */
#pragma once

#include "StandInControl.h"

#include <commctrl.h>

/* The strip at the lower edge of the screen that is the menu bar's, in pixels. */
enum { menuBarHeight = 26 };

/* The data of a menu bar's button that does not open a pop-up. */
enum { noPopup = 0xFFFF };

/* The calls since the last StandInMenuBars. */
extern StandInShellRecord shellCalls;

/* The desktop's work area without the menu bar's strip. */
RECT DialogArea(void);

/* Turns a tool bar into the menu bar of `dialog`. The data of its buttons are the indices of their pop-ups in
 * `menu`, which is the bar's from here on; if this fails the tool bar and the menu are the caller's as
 * before. */
BOOL BindMenuBar(HWND bar, HWND dialog, HMENU menu);
