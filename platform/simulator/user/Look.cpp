#include "user/Look.h"

#include <utility>

#include "screen/Controls.h"
#include "screen/MenuBars.h"

namespace simulator {

ShownControl Look(const Window& control) {
    ShownControl shown;
    shown.id = control.id;
    shown.className = control.className;
    shown.text = control.text;
    shown.place = control.place;
    shown.isVisible = control.IsVisible();
    shown.isEnabled = control.IsEnabled();
    shown.hasFocus = Screen::Current().Focus() == control.handle;
    if (const auto* const edit = dynamic_cast<const EditControl*>(&control)) {
        shown.text = edit->ShownText();
        shown.isPassword = edit->IsPassword();
    }
    if (const auto* const button = dynamic_cast<const ButtonControl*>(&control))
        shown.isChecked = button->check == BST_CHECKED;
    return shown;
}

std::vector<ShownMenuItem> LookAtMenu(HMENU handle) {
    std::vector<ShownMenuItem> shown;
    const Menu* const menu = LookupMenu(handle);
    if (menu == nullptr) return shown;
    for (const MenuItem& item : menu->items) {
        ShownMenuItem seen;
        seen.text = item.text;
        seen.command = item.subMenu == nullptr ? item.id : 0;
        seen.isEnabled = (item.state & (MF_GRAYED | MF_DISABLED)) == 0;
        seen.isChecked = (item.state & MFS_CHECKED) != 0;
        seen.isSeparator = (item.type & MFT_SEPARATOR) != 0;
        seen.items = LookAtMenu(item.subMenu);
        shown.push_back(std::move(seen));
    }
    return shown;
}

std::vector<ShownButton> LookAtBar(const Window& dialog) {
    std::vector<ShownButton> shown;
    const BarWindow* const bar = BarOf(dialog);
    if (bar == nullptr || !bar->IsVisible()) return shown;
    for (const BarButton& button : bar->buttons) {
        if ((button.state & TBSTATE_HIDDEN) != 0) continue;
        const bool isEnabled = (button.state & TBSTATE_ENABLED) != 0;
        shown.push_back({button.text, button.command, isEnabled, LookAtMenu(button.menu)});
    }
    return shown;
}

ShownDialog Look(const DialogWindow& dialog) {
    ShownDialog shown;
    shown.window = dialog.handle;
    shown.owner = dialog.owner;
    shown.ownerName = WindowName(dialog.owner);
    shown.caption = dialog.text;
    shown.place = dialog.place;
    for (const HWND child : dialog.childWindows) {
        if (const Window* const control = Screen::Current().Lookup(child))
            shown.controls.push_back(Look(*control));
    }
    shown.menuBar = LookAtBar(dialog);
    return shown;
}

}  // namespace simulator
