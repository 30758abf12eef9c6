#pragma once

#include "Platform.h"

namespace simulator {

/* Runs the next script of the user on a dialog; false when there is none. */
bool RunNextScript(HWND dialog);

/* Forgets the scripts. */
void ResetScripts();

/* Reports scripts that were not needed. */
void ReportScripts();

}  // namespace simulator
