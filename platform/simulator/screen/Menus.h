#pragma once

#include "Platform.h"

#include <string>
#include <string_view>
#include <vector>

#include "machine/Handles.h"

namespace simulator {

struct MenuItem {
    UINT type = MFT_STRING;
    UINT state = MFS_ENABLED;
    UINT id = 0;
    HMENU subMenu = nullptr;
    std::u16string text;
    ULONG_PTR data = 0;
};

struct Menu : Object {
    Menu() : Object("menu") {}

    std::vector<MenuItem> items;
    bool isPart = false;  // of another menu or of a menu bar, and destroyed with it
};

/* The open menu of that handle, or null. */
Menu* LookupMenu(HMENU handle);

/* Makes a menu with its sub-menus from a compiled menu resource of either kind; null when that is damaged. */
HMENU MakeMenu(std::string_view resource);

/* Destroys a menu and its sub-menus. */
void DestroyMenuTree(HMENU menu);

/* Reports and destroys the menus that were made in this test and not destroyed. */
void ReportMenus();

}  // namespace simulator
