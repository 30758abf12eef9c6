/* Compiled menu resources. */
#include "Platform.h"

#include "modules/Reader.h"
#include "screen/Menus.h"

namespace simulator {

namespace {

// How deep menus may lie in each other: far beyond what a screen shows, and no strain on the stack.
constexpr int deepest = 20;

HMENU NewMenu() {
    return static_cast<HMENU>(Handles::Current().Open(std::make_unique<Menu>()));
}

HMENU ReadItems(Reader& reader, bool isExtended, int depth);

/* The sub-menu of an item that has one; the menu becomes its owner. */
void ReadSubMenu(Reader& reader, bool isExtended, int depth, MenuItem& item) {
    item.subMenu = ReadItems(reader, isExtended, depth + 1);
    if (Menu* const menu = LookupMenu(item.subMenu)) menu->isPart = true;
}

/* An item of a MENU resource; whether it is its menu's last. */
bool ReadPlainItem(Reader& reader, int depth, MenuItem& item) {
    const uint16_t flags = reader.Word();
    const bool isPopUp = (flags & MF_POPUP) != 0;
    if (!isPopUp) item.id = reader.Word();
    item.text = reader.Text();
    item.state = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED);
    item.type = flags & (MF_MENUBARBREAK | MF_MENUBREAK);
    // The resource compiler writes a separator as an item without anything.
    if ((flags & MF_SEPARATOR) != 0 || (!isPopUp && item.id == 0 && item.text.empty()))
        item.type |= MFT_SEPARATOR;
    if (isPopUp) ReadSubMenu(reader, false, depth, item);
    return (flags & MF_END) != 0;
}

/* An item of a MENUEX resource; whether it is its menu's last. */
bool ReadExtendedItem(Reader& reader, int depth, MenuItem& item) {
    constexpr uint16_t hasSubMenu = 1;
    reader.Align();
    item.type = reader.Double();
    item.state = reader.Double();
    item.id = reader.Double();
    const uint16_t flags = reader.Word();
    item.text = reader.Text();
    reader.Align();
    if ((flags & hasSubMenu) != 0) {
        reader.Double();  // help id
        ReadSubMenu(reader, true, depth, item);
    }
    return (flags & MF_END) != 0;
}

/* A menu's items; null when they are not whole, or lie too deep. Whoever contains the menu is not whole then
 * either, and reads no further. */
HMENU ReadItems(Reader& reader, bool isExtended, int depth) {
    if (depth == deepest) reader.Skip(SIZE_MAX);
    if (!reader.IsGood()) return nullptr;
    const HMENU handle = NewMenu();
    auto& menu = dynamic_cast<Menu&>(*Handles::Current().Lookup(handle));
    for (bool isLast = false; !isLast;) {
        MenuItem item;
        isLast = isExtended ? ReadExtendedItem(reader, depth, item) : ReadPlainItem(reader, depth, item);
        menu.items.push_back(std::move(item));
        if (reader.IsGood()) continue;
        DestroyMenuTree(handle);
        return nullptr;
    }
    return handle;
}

}  // namespace

HMENU MakeMenu(std::string_view resource) {
    Reader reader(resource);
    const uint16_t version = reader.Word();
    const uint16_t offset = reader.Word();
    reader.Skip(offset);
    if (!reader.IsGood() || version > 1) return nullptr;
    return ReadItems(reader, version == 1, 0);
}

}  // namespace simulator
