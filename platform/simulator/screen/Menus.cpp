/* Menus. */
#include "Platform.h"

#include "screen/Menus.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "machine/Call.h"
#include "machine/Text.h"
#include "machine/Violations.h"

namespace simulator {

namespace {

constexpr UINT typeBits = MFT_BITMAP | MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_OWNERDRAW | MFT_RADIOCHECK |
                          MFT_SEPARATOR | MFT_RIGHTORDER;

/* The item at a position of this menu, or of a command in it or its sub-menus; null when there is none. */
MenuItem* FindItem(Menu& menu, UINT item, bool isPosition) {
    if (isPosition) return item < menu.items.size() ? &menu.items[item] : nullptr;
    for (MenuItem& candidate : menu.items) {
        if (candidate.subMenu == nullptr && candidate.id == item) return &candidate;
        if (Menu* const subMenu = LookupMenu(candidate.subMenu)) {
            if (MenuItem* const found = FindItem(*subMenu, item, false)) return found;
        }
    }
    return nullptr;
}

bool IsSize(UINT size) {
    // Older systems do not have the last field.
    return size == sizeof(MENUITEMINFOW) || size == offsetof(MENUITEMINFOW, hbmpItem);
}

std::string InfoSizeText(UINT size) {
    return SizeText(IsSize(size) ? 0 : size, 0);
}

bool HasText(const MENUITEMINFOW& info) {
    return (info.fMask & (MIIM_TYPE | MIIM_STRING)) != 0;
}

bool HasType(const MENUITEMINFOW& info) {
    return (info.fMask & (MIIM_TYPE | MIIM_FTYPE)) != 0;
}

/* What a caller asks for, or gives. */
std::string InfoText(const MENUITEMINFOW& info, bool isGiven) {
    std::string text = "{" + InfoSizeText(info.cbSize) + ", mask " + Hex(info.fMask);
    if (HasType(info)) text += ", type " + Hex(info.fType);
    if (isGiven && (info.fMask & MIIM_STATE) != 0) text += ", state " + Hex(info.fState);
    if (isGiven && (info.fMask & MIIM_ID) != 0) text += ", id " + std::to_string(info.wID);
    if (HasText(info))
        text += isGiven ? ", text " + Quoted(info.dwTypeData) : ", room " + std::to_string(info.cch);
    return text + "}";
}

std::vector<std::string> Arguments(HMENU menu, UINT item, BOOL isPosition, const std::string& info) {
    return {Handles::Current().NameOf(menu), std::to_string(item), isPosition != FALSE ? "TRUE" : "FALSE",
            info};
}

/* Copies as much of an item's text as there is room for. Only strings have one. */
void CopyText(const MenuItem& item, MENUITEMINFOW& info) {
    const bool isString = (item.type & (MFT_SEPARATOR | MFT_OWNERDRAW | MFT_BITMAP)) == 0;
    if (!isString && (info.fMask & MIIM_TYPE) != 0) {
        info.dwTypeData = nullptr;
        info.cch = 0;
        return;
    }
    if (info.dwTypeData == nullptr || info.cch == 0) {
        info.cch = static_cast<UINT>(item.text.size());
        return;
    }
    const size_t length = std::min<size_t>(item.text.size(), info.cch - 1);
    std::memcpy(info.dwTypeData, item.text.data(), length * sizeof(WCHAR));
    info.dwTypeData[length] = 0;
    info.cch = static_cast<UINT>(length);
}

std::string Read(const MenuItem& item, MENUITEMINFOW& info) {
    std::string detail;
    if (HasType(info)) info.fType = item.type;
    if ((info.fMask & MIIM_STATE) != 0) info.fState = item.state;
    if ((info.fMask & MIIM_ID) != 0) info.wID = item.id;
    if ((info.fMask & MIIM_SUBMENU) != 0) info.hSubMenu = item.subMenu;
    if ((info.fMask & MIIM_DATA) != 0) info.dwItemData = item.data;
    if (HasText(info)) CopyText(item, info);
    if (HasType(info)) detail += ", type " + Hex(info.fType);
    if ((info.fMask & MIIM_STATE) != 0) detail += ", state " + Hex(info.fState);
    if ((info.fMask & MIIM_ID) != 0) detail += ", id " + std::to_string(info.wID);
    if (HasText(info))
        detail += ", " + (info.dwTypeData != nullptr ? Quoted(info.dwTypeData) : std::string("no text"));
    return detail;
}

void Write(MenuItem& item, const MENUITEMINFOW& info) {
    if (HasType(info)) item.type = info.fType & typeBits;
    if ((info.fMask & MIIM_STATE) != 0) item.state = info.fState;
    if ((info.fMask & MIIM_ID) != 0) item.id = info.wID;
    if ((info.fMask & MIIM_DATA) != 0) item.data = info.dwItemData;
    if (HasText(info)) item.text = TextOrEmpty(info.dwTypeData);
}

HMENU NewMenu(Call& call) {
    call.Arguments({});
    if (call.MustFail()) return call.Fails(HMENU{}, "null", call.OrderedError());
    const auto menu = static_cast<HMENU>(Handles::Current().Open(std::make_unique<Menu>()));
    return call.Returns(menu, Handles::Current().NameOf(menu));
}

MenuItem NewItem(UINT flags, UINT_PTR idOrMenu, LPCWSTR text) {
    MenuItem item;
    item.type = flags & typeBits;
    item.state = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED);
    if ((flags & MF_SEPARATOR) == 0) item.text = TextOrEmpty(text);
    if ((flags & MF_POPUP) != 0) {
        item.subMenu = reinterpret_cast<HMENU>(idOrMenu);
    } else {
        item.id = static_cast<UINT>(idOrMenu);
    }
    return item;
}

}  // namespace

Menu* LookupMenu(HMENU handle) {
    return dynamic_cast<Menu*>(Handles::Current().Lookup(handle));
}

void DestroyMenuTree(HMENU handle) {
    const Menu* const menu = LookupMenu(handle);
    if (menu == nullptr) return;
    for (const MenuItem& item : menu->items)
        DestroyMenuTree(item.subMenu);
    Handles::Current().Close(handle);
}

void ReportMenus() {
    std::vector<HMENU> left;
    Handles::Current().ForEach([&](void* handle, const Object& object) {
        const auto* const menu = dynamic_cast<const Menu*>(&object);
        if (menu == nullptr || menu->isEarlier) return;
        left.push_back(static_cast<HMENU>(handle));
        if (!menu->isPart) Violate(menu->name + " is still open at the end of the test");
    });
    for (const HMENU menu : left)
        Handles::Current().Close(menu);
}

}  // namespace simulator

using simulator::Call;
using simulator::Handles;
using simulator::Menu;
using simulator::MenuItem;

BOOL WINAPI GetMenuItemInfoW(HMENU handle, UINT position, BOOL isPosition, LPMENUITEMINFOW info) {
    Call call("GetMenuItemInfoW");
    call.Arguments(simulator::Arguments(handle, position, isPosition, simulator::InfoText(*info, false)));
    if (call.MustFail()) return call.False(call.OrderedError());
    Menu* const menu = Handles::Current().Find<Menu>(handle, call);
    if (menu == nullptr) return call.False(ERROR_INVALID_MENU_HANDLE);
    if (!simulator::IsSize(info->cbSize)) return call.False(ERROR_INVALID_PARAMETER);
    const MenuItem* const item = simulator::FindItem(*menu, position, isPosition != FALSE);
    if (item == nullptr) return call.False(ERROR_MENU_ITEM_NOT_FOUND);
    return call.Returns(TRUE, "TRUE" + simulator::Read(*item, *info));
}

BOOL WINAPI SetMenuItemInfoW(HMENU handle, UINT position, BOOL isPosition, const MENUITEMINFOW* info) {
    Call call("SetMenuItemInfoW");
    call.Arguments(simulator::Arguments(handle, position, isPosition, simulator::InfoText(*info, true)));
    if (call.MustFail()) return call.False(call.OrderedError());
    Menu* const menu = Handles::Current().Find<Menu>(handle, call);
    if (menu == nullptr) return call.False(ERROR_INVALID_MENU_HANDLE);
    if (!simulator::IsSize(info->cbSize)) return call.False(ERROR_INVALID_PARAMETER);
    MenuItem* const item = simulator::FindItem(*menu, position, isPosition != FALSE);
    if (item == nullptr) return call.False(ERROR_MENU_ITEM_NOT_FOUND);
    simulator::Write(*item, *info);
    return call.True();
}

HMENU WINAPI GetSubMenu(HMENU handle, INT position) {
    Call call("GetSubMenu");
    call.Arguments({Handles::Current().NameOf(handle), std::to_string(position)});
    if (call.MustFail()) return call.Fails(HMENU{}, "null", call.OrderedError());
    Menu* const menu = Handles::Current().Find<Menu>(handle, call);
    if (menu == nullptr) return call.Fails(HMENU{}, "null", ERROR_INVALID_MENU_HANDLE);
    const MenuItem* const item = simulator::FindItem(*menu, static_cast<UINT>(position), true);
    const HMENU subMenu = item != nullptr ? item->subMenu : nullptr;
    return call.Returns(subMenu, Handles::Current().NameOf(subMenu));
}

HMENU WINAPI CreateMenu() {
    Call call("CreateMenu");
    return simulator::NewMenu(call);
}

HMENU WINAPI CreatePopupMenu() {
    Call call("CreatePopupMenu");
    return simulator::NewMenu(call);
}

BOOL WINAPI AppendMenuW(HMENU handle, UINT flags, UINT_PTR idOrMenu, LPCWSTR text) {
    Call call("AppendMenuW");
    const bool isPopUp = (flags & MF_POPUP) != 0;
    auto* const subMenuHandle = reinterpret_cast<HMENU>(idOrMenu);
    call.Arguments({Handles::Current().NameOf(handle), simulator::Hex8(flags),
                    isPopUp ? Handles::Current().NameOf(subMenuHandle) : std::to_string(idOrMenu),
                    (flags & MF_SEPARATOR) == 0 ? simulator::Quoted(text) : std::string("null")});
    if (call.MustFail()) return call.False(call.OrderedError());
    Menu* const menu = Handles::Current().Find<Menu>(handle, call);
    if (menu == nullptr) return call.False(ERROR_INVALID_MENU_HANDLE);
    if (isPopUp) {
        Menu* const subMenu = Handles::Current().Find<Menu>(subMenuHandle, call);
        if (subMenu == nullptr) return call.False(ERROR_INVALID_MENU_HANDLE);
        subMenu->isPart = true;
    }
    menu->items.push_back(simulator::NewItem(flags, idOrMenu, text));
    return call.True();
}

BOOL WINAPI DestroyMenu(HMENU handle) {
    Call call("DestroyMenu");
    call.Arguments({Handles::Current().NameOf(handle)});
    if (Handles::Current().Find<Menu>(handle, call) == nullptr) return call.False(ERROR_INVALID_MENU_HANDLE);
    simulator::DestroyMenuTree(handle);
    return call.MustFail() ? call.False(call.OrderedError()) : call.True();
}
