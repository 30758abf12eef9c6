/* The user of a dialog: what he does with its menu bar and with the keys below it. */
#include "Platform.h"

#include <functional>
#include <optional>

#include "machine/Allocations.h"
#include "machine/Text.h"
#include "screen/MenuBars.h"
#include "screen/Menus.h"
#include "user/DialogUser.h"
#include "user/UserActions.h"

namespace simulator {

namespace {

/* The dialog's menu bar when the user can use it, otherwise null and a violation. */
BarWindow* UsableBar(HWND handle) {
    const DialogWindow* const dialog = ReachableDialog(handle);
    if (dialog == nullptr) return nullptr;
    BarWindow* const bar = BarOf(*dialog);
    if (bar == nullptr) UserViolates(handle, "there is no menu bar");
    return bar;
}

bool IsShown(const BarButton& button) {
    return (button.state & TBSTATE_HIDDEN) == 0;
}

bool IsEnabled(const BarButton& button) {
    return (button.state & TBSTATE_ENABLED) != 0;
}

/* Presses the first shown plain button that `isMeant`; `what` describes it. */
template <class Meant>
void PressBarButton(HWND dialog, const Meant& isMeant, const std::string& what) {
    const BarWindow* const bar = UsableBar(dialog);
    if (bar == nullptr) return;
    for (const BarButton& button : bar->buttons) {
        if (!IsShown(button) || button.menu != nullptr || !isMeant(button)) continue;
        if (!IsEnabled(button)) return UserViolates(dialog, what + " is disabled");
        return Deliver(dialog, WM_COMMAND, MAKEWPARAM(button.command, 0),
                       reinterpret_cast<LPARAM>(bar->handle));
    }
    UserViolates(dialog, "the menu bar shows no " + what);
}

struct FoundItem {
    const MenuItem* item = nullptr;
    bool isEnabled = true;  // with all the pop-ups around it
};

/* The first item of a pop-up or of those in it that `isMeant`. */
template <class Meant>
FoundItem FindShown(HMENU handle, const Meant& isMeant) {
    const Menu* const menu = LookupMenu(handle);
    if (menu == nullptr) return {};
    for (const MenuItem& item : menu->items) {
        const bool isEnabled = (item.state & (MF_GRAYED | MF_DISABLED)) == 0;
        if ((item.type & MFT_SEPARATOR) != 0) continue;
        if (item.subMenu == nullptr && isMeant(item)) return {&item, isEnabled};
        FoundItem found = FindShown(item.subMenu, isMeant);
        found.isEnabled = found.isEnabled && isEnabled;
        if (found.item != nullptr) return found;
    }
    return {};
}

/* Opens the pop-up that has the item that `isMeant` and chooses it; `what` describes it. */
template <class Meant>
void ChooseItem(HWND dialog, const Meant& isMeant, const std::string& what) {
    const BarWindow* const bar = UsableBar(dialog);
    if (bar == nullptr) return;
    for (const BarButton& button : bar->buttons) {
        if (!IsShown(button) || !IsEnabled(button)) continue;
        if (FindShown(button.menu, isMeant).item == nullptr) continue;
        Deliver(dialog, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(button.menu), 0);
        // The dialog may change its menu before it is seen.
        const FoundItem found = FindShown(button.menu, isMeant);
        if (found.item == nullptr) break;
        if (!found.isEnabled) return UserViolates(dialog, what + " is disabled");
        return Deliver(dialog, WM_COMMAND, MAKEWPARAM(found.item->id, 0), 0);
    }
    UserViolates(dialog, "no pop-up of the menu bar shows " + what);
}

}  // namespace

}  // namespace simulator

using simulator::OwnWork;

void DialogUser::PressButton(int command) {
    const OwnWork ownWork;
    simulator::PressBarButton(
        dialog_, [&](const simulator::BarButton& button) { return button.command == command; },
        "button with the command " + std::to_string(command));
}

void DialogUser::PressButton(std::u16string_view text) {
    const OwnWork ownWork;
    simulator::PressBarButton(
        dialog_, [&](const simulator::BarButton& button) { return button.text == text; },
        "button " + simulator::Quoted(text));
}

void DialogUser::ChooseMenuItem(UINT command) {
    const OwnWork ownWork;
    simulator::ChooseItem(
        dialog_, [&](const simulator::MenuItem& item) { return item.id == command; },
        "the command " + std::to_string(command));
}

void DialogUser::ChooseMenuItem(std::u16string_view text) {
    const OwnWork ownWork;
    simulator::ChooseItem(
        dialog_, [&](const simulator::MenuItem& item) { return item.text == text; },
        "the item " + simulator::Quoted(text));
}

void DialogUser::PressBack() {
    const OwnWork ownWork;
    const simulator::DialogWindow* const dialog = simulator::ReachableDialog(dialog_);
    if (dialog == nullptr) return;
    const simulator::BarWindow* const bar = simulator::BarOf(*dialog);
    WORD flags = 0;
    if (bar != nullptr && bar->keys.contains(VK_ESCAPE)) flags = bar->keys.at(VK_ESCAPE);
    if ((flags & SHMBOF_NOTIFY) != 0)
        simulator::Deliver(dialog_, WM_HOTKEY, VK_ESCAPE, MAKELPARAM(0, VK_ESCAPE));
    if ((flags & SHMBOF_NODEFAULT) == 0 && IsOpen())
        simulator::Deliver(dialog_, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
}
