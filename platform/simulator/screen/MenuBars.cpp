/* What the shell does for dialogs: its controls, menu bars, the place of a dialog, the Back key. */
#include "Platform.h"

#include "screen/MenuBars.h"

#include <optional>

#include "machine/Call.h"
#include "machine/Text.h"
#include "modules/Modules.h"
#include "modules/Reader.h"
#include "modules/Resources.h"
#include "screen/Controls.h"
#include "screen/Dialogs.h"
#include "screen/Menus.h"
#include "screen/Messages.h"

namespace simulator {

namespace {

constexpr uint16_t menuType = 4;
constexpr uint16_t dataType = 10;
constexpr uint16_t noPopUp = 0xFFFF;
constexpr int noImage = 65534;

/* The pop-up at that place of a menu, or null. */
HMENU PopUpAt(HMENU handle, size_t index) {
    const Menu* const menu = LookupMenu(handle);
    return menu != nullptr && index < menu->items.size() ? menu->items[index].subMenu : nullptr;
}

/* The next button of a bar's layout; nothing when it lacks its text or its pop-up. */
std::optional<BarButton> ReadButton(Reader& reader, HMODULE module, HMENU menu) {
    BarButton button;
    button.image = reader.Word();
    button.command = reader.Word();
    button.state = static_cast<BYTE>(reader.Word());
    button.style = static_cast<BYTE>(reader.Word());
    button.text = StringOf(module, reader.Word());
    reader.Word();
    const uint16_t popUp = reader.Word();
    if (popUp != noPopUp) button.menu = PopUpAt(menu, popUp);
    const bool isWhole =
        reader.IsGood() && !button.text.empty() && (popUp == noPopUp || button.menu != nullptr);
    return isWhole ? std::optional(button) : std::nullopt;
}

/* The buttons that a layout describes; nothing when it is damaged or for another menu. */
std::optional<std::vector<BarButton>> ReadButtons(const Resource& layout, HMODULE module, UINT id,
                                                  HMENU menu) {
    Reader reader(layout.bytes);
    const UINT menuId = reader.Word();
    const size_t count = reader.Word();
    if (!reader.IsGood() || menuId != id) return std::nullopt;
    std::vector<BarButton> buttons;
    while (buttons.size() < count) {
        auto button = ReadButton(reader, module, menu);
        if (!button) return std::nullopt;
        buttons.push_back(*std::move(button));
    }
    return buttons;
}

/* Without a layout, the top of the menu becomes the buttons. */
std::vector<BarButton> ButtonsOfMenu(HMENU handle) {
    std::vector<BarButton> buttons;
    for (const MenuItem& item : LookupMenu(handle)->items) {
        BarButton button;
        button.image = noImage;
        button.command = item.subMenu == nullptr ? static_cast<int>(item.id) : 0;
        button.state = TBSTATE_ENABLED;
        button.style = static_cast<BYTE>(BTNS_AUTOSIZE | (item.subMenu != nullptr ? BTNS_DROPDOWN : 0));
        button.text = item.text;
        button.menu = item.subMenu;
        buttons.push_back(std::move(button));
    }
    return buttons;
}

HWND AddBar(const SHMENUBARINFO& info, HMENU menu, std::vector<BarButton> buttons) {
    auto bar = std::make_unique<BarWindow>();
    bar->className = u"toolbar";
    bar->procedure = BarProcedure;
    bar->owner = info.hwndParent;
    bar->instance = info.hInstRes;
    bar->style = WS_VISIBLE;
    bar->place = {0, screenHeight - barHeight, screenWidth, screenHeight};
    bar->menu = menu;
    bar->buttons = std::move(buttons);
    if (Menu* const owned = LookupMenu(menu)) owned->isPart = true;
    return Screen::Current().Add(std::move(bar));
}

/* Makes a bar; null with `error` when its resources are not there or damaged. */
HWND MakeBar(const SHMENUBARINFO& info, DWORD& error) {
    error = ERROR_RESOURCE_NAME_NOT_FOUND;
    const auto id = static_cast<uint16_t>(info.nToolBarId);
    const Resource* const menuResource = FindResourceOf(info.hInstRes, id, menuType);
    if (menuResource == nullptr) return nullptr;
    error = ERROR_INVALID_DATA;
    const HMENU menu = MakeMenu(menuResource->bytes);
    if (menu == nullptr) return nullptr;
    const Resource* const layout = FindResourceOf(info.hInstRes, id, dataType);
    auto buttons = layout != nullptr ? ReadButtons(*layout, info.hInstRes, id, menu) : ButtonsOfMenu(menu);
    if (!buttons) {
        DestroyMenuTree(menu);
        return nullptr;
    }
    return AddBar(info, menu, *std::move(buttons));
}

std::string BarInfoText(const SHMENUBARINFO& info) {
    std::string text = "{" + SizeText(info.cbSize, sizeof info) + ", parent " + WindowName(info.hwndParent) +
                       ", flags " + Hex(info.dwFlags) + ", id " + std::to_string(info.nToolBarId) + ", " +
                       ModuleName(info.hInstRes);
    if (info.nBmpId != 0) text += ", bitmap " + std::to_string(info.nBmpId);
    if (info.cBmpImages != 0) text += ", images " + std::to_string(info.cBmpImages);
    return text + "}";
}

}  // namespace

BarWindow* BarOf(const Window& dialog) {
    for (const HWND handle : Screen::Current().TopLevels()) {
        auto* const bar = Screen::Current().Lookup<BarWindow>(handle);
        if (bar != nullptr && bar->owner == dialog.handle) return bar;
    }
    return nullptr;
}

}  // namespace simulator

using simulator::Call;
using simulator::Screen;
using simulator::WindowName;

BOOL WINAPI SHInitExtraControls(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    Call call("SHInitExtraControls");
    call.Arguments(
        {simulator::ModuleName(instance), std::to_string(reason), simulator::PointerText(reserved)});
    return call.MustFail() ? call.False(call.OrderedError()) : call.True();
}

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info) {
    Call call("SHCreateMenuBar");
    call.Arguments({info != nullptr ? simulator::BarInfoText(*info) : "null"});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (info == nullptr || info->cbSize != sizeof *info) return call.False(ERROR_INVALID_PARAMETER);
    const auto* const parent = Screen::Current().Find(info->hwndParent, call);
    if (parent == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    if (info->dwFlags != SHCMBF_HMENU) {
        call.Violates("a menu bar of this kind is not simulated");
        return call.False(ERROR_INVALID_PARAMETER);
    }
    if (simulator::BarOf(*parent) != nullptr) {
        call.Violates(parent->name + " has a menu bar already");
        return call.False(ERROR_ALREADY_EXISTS);
    }
    DWORD error = ERROR_SUCCESS;
    const HWND bar = simulator::MakeBar(*info, error);
    if (bar == nullptr) return call.False(error);
    info->hwndMB = bar;
    return call.True(WindowName(bar));
}

BOOL WINAPI SHInitDialog(PSHINITDLGINFO info) {
    Call call("SHInitDialog");
    call.Arguments({info != nullptr
                        ? "{mask " + simulator::Hex(info->dwMask) + ", " + WindowName(info->hDlg) +
                              ", flags " + simulator::Hex(info->dwFlags) + "}"
                        : "null"});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (info == nullptr) return call.False(ERROR_INVALID_PARAMETER);
    auto* const dialog = Screen::Current().Find<simulator::DialogWindow>(info->hDlg, call);
    if (dialog == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    if ((info->dwMask & SHIDIM_FLAGS) != 0 && (info->dwFlags & SHIDIF_SIZEDLGFULLSCREEN) != 0) {
        const RECT place = {0, simulator::barHeight, simulator::screenWidth,
                            simulator::screenHeight - simulator::barHeight};
        dialog->place = place;
        Screen::Current().Deliver(info->hDlg, WM_SIZE, SIZE_RESTORED,
                                  MAKELPARAM(place.right - place.left, place.bottom - place.top));
    }
    return call.True();
}

void WINAPI SHSendBackToFocusWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    Call call("SHSendBackToFocusWindow");
    call.Arguments({simulator::MessageName(nullptr, message), simulator::Hex(wParam),
                    simulator::Hex(static_cast<ULONG_PTR>(lParam))});
    if (!call.MustFail() && message == WM_HOTKEY)
        Screen::Current().Deliver(Screen::Current().Focus(), WM_CHAR, VK_BACK, 1);
    call.Done();
}
