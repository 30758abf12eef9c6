/* What the operations of a DialogUser share. */
#pragma once

#include "Platform.h"

#include <string>

#include "screen/Dialogs.h"

namespace simulator {

/* A violation of the user of that dialog. */
void UserViolates(HWND dialog, const std::string& what);

/* The dialog, when it has not ended; otherwise null and a violation. */
DialogWindow* OpenDialog(HWND handle);

/* The dialog, when it takes input as well; otherwise null and a violation. */
DialogWindow* ReachableDialog(HWND handle);

/* Delivers a message, and all that were posted because of it. */
void Deliver(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
void DeliverAllPosted();

}  // namespace simulator
