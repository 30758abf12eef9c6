/* Message boxes on the screen of a handheld. */
#pragma once

#include "Platform.h"

/* Lays out a message box with an OK button as a handheld does: as wide as the screen, its text broken into
 * lines that fit there, without its icon when that takes too much of the room. The desktop's own boxes are
 * wider than such a screen. */
void FitToScreen(HWND box);
