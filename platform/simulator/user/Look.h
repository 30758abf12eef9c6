#pragma once

#include "Platform.h"

#include <vector>

#include "screen/Dialogs.h"
#include "screen/Menus.h"
#include "user/ShownDialog.h"

namespace simulator {

/* What the user sees of a dialog, of one control, of a dialog's menu bar, and of a menu. */
ShownDialog Look(const DialogWindow& dialog);
ShownControl Look(const Window& control);
std::vector<ShownButton> LookAtBar(const Window& dialog);
std::vector<ShownMenuItem> LookAtMenu(HMENU menu);

}  // namespace simulator
