/* Translates what the screen shows: every text is looked up in `translationCatalogue` and replaced if it has
 * a translation. All throw std::bad_alloc. */
#pragma once

#include "Platform.h"

/* Translates the window's own text, of which 4999 units count. Always TRUE. */
BOOL TranslateWindowText(HWND window);

/* Translates the texts of the window, of its controls, and of theirs. */
void TranslateWindowTree(HWND window);

/* Translates the texts of the menu's first 256 items, of which 99 units count, and of their sub-menus. An
 * item that has a translation becomes a plain text item, whatever it was. */
void TranslateMenu(HMENU menu);

/* Translates the texts of the tool bar's buttons, of which 254 units count. */
void TranslateToolbar(HWND toolbar);
