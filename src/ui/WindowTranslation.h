/* Putting the user's language on what the screen shows: every text is looked up in `translationCatalogue` and
 * written back if it has a translation. All throw std::bad_alloc. */
#pragma once

#include "Platform.h"

/* The window's own text, of which 4999 units count. Always TRUE: a walk over windows goes on. */
BOOL TranslateWindowText(HWND window);

/* The texts of the window, its controls and whatever lies below them. */
void TranslateWindowTree(HWND window);

/* The texts of the menu's first 256 items, of which 99 units count, and of their sub-menus. An item that has
 * a translation becomes a plain text item, whatever it was. */
void TranslateMenu(HMENU menu);

/* The texts of the tool bar's buttons, of which 254 units count. */
void TranslateToolbar(HWND toolbar);
