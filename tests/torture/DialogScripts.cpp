#include "DialogScripts.h"

#include <algorithm>

#include "screen/Screen.h"

namespace {

void GiveUp(DialogUser& user) {
    if (user.IsOpen()) user.Send(WM_COMMAND, IDCANCEL, 0);
}

void Destroy(DialogUser& user) {
    simulator::Screen::Current().Destroy(user.Window());
}

bool HasItem(const std::vector<ShownMenuItem>& items, UINT command) {
    return std::ranges::any_of(items, [&](const ShownMenuItem& item) {
        return item.command == command || HasItem(item.items, command);
    });
}

}  // namespace

void UseDialogToItsEnd(DialogScript script) {
    Device& device = Device::Current();
    device.UseDialog([script = std::move(script)](DialogUser& user) {
        script(user);
        GiveUp(user);
        if (user.IsOpen()) Destroy(user);
    });
}

bool TypeIfThere(DialogUser& user, int field, std::u16string_view text) {
    if (!user.IsOpen()) return false;
    user.Type(field, text);
    return true;
}

bool PressIfThere(DialogUser& user, int command) {
    if (!user.IsOpen()) return false;
    const std::vector<ShownButton> bar = user.MenuBar();
    const bool isThere = std::ranges::any_of(
        bar, [&](const ShownButton& button) { return button.command == command && button.menu.empty(); });
    if (isThere) user.PressButton(command);
    return isThere;
}

bool ChooseIfThere(DialogUser& user, UINT command) {
    if (!user.IsOpen()) return false;
    const std::vector<ShownButton> bar = user.MenuBar();
    const bool isThere =
        std::ranges::any_of(bar, [&](const ShownButton& button) { return HasItem(button.menu, command); });
    if (isThere) user.ChooseMenuItem(command);
    return isThere;
}
