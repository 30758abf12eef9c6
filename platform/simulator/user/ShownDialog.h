#pragma once

#include "Platform.h"

#include <vector>

#include "screen/Dialogs.h"

namespace simulator {

/* What the user sees of a dialog, of one control, and of a dialog's menu bar. */
ShownDialog Look(const DialogWindow& dialog);
ShownControl Look(const Window& control);
std::vector<ShownButton> LookAtBar(const Window& dialog);

}  // namespace simulator
