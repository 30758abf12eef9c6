/* What the user sees of dialogs, their menu bars and menus.
 *
 * The screen has 240x320 pixels. The task bar takes the first 26 lines, a menu bar the last 26. */
#pragma once

#include "Platform.h"

#include <optional>
#include <string>
#include <vector>

/* A control as it stands on the screen. */
struct ShownControl {
    int id = 0;
    std::u16string className;  // u"static", u"edit" or u"button"
    std::u16string text;       // in a password field one * for each unit
    RECT place{};              // in pixels of the dialog
    bool isVisible = false;
    bool isEnabled = false;
    bool isChecked = false;
    bool isPassword = false;
    bool hasFocus = false;
};

/* An item of a menu. */
struct ShownMenuItem {
    std::u16string text;
    UINT command = 0;  // 0 for pop-ups and separators
    bool isEnabled = true;
    bool isChecked = false;
    bool isSeparator = false;
    std::vector<ShownMenuItem> items;  // of a pop-up
};

/* A button of a menu bar. */
struct ShownButton {
    std::u16string text;
    int command = 0;
    bool isEnabled = false;
    std::vector<ShownMenuItem> menu;  // what it drops down; empty for a plain button
};

/* A dialog as it was once WM_INITDIALOG had been handled, and how it ended. */
struct ShownDialog {
    HWND window = nullptr;
    HWND owner = nullptr;
    std::string ownerName;  // as the journal names it
    std::u16string caption;
    RECT place{};                        // on the screen
    std::vector<ShownControl> controls;  // in z-order, which is that of the template
    std::vector<ShownButton> menuBar;    // empty: it has none
    std::optional<INT_PTR> result;       // what DialogBoxIndirectParamW returned; nothing: it still runs
};
