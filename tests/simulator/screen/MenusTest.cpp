#include <cstddef>

#include "DialogTest.h"

namespace {

MENUITEMINFOW Info(UINT mask, WCHAR* buffer = nullptr, UINT size = 0) {
    MENUITEMINFOW info{};
    info.cbSize = offsetof(MENUITEMINFOW, hbmpItem);
    info.fMask = mask;
    info.dwTypeData = buffer;
    info.cch = size;
    return info;
}

class Menus : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        menu = CreateMenu();
        popUp = CreatePopupMenu();
        AppendMenuW(menu, MF_STRING, 1, u"Done");
        AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popUp), u"Menu");
        AppendMenuW(popUp, MF_STRING | MF_GRAYED, 1016, u"New");
        AppendMenuW(popUp, MF_SEPARATOR, 0, nullptr);
        AppendMenuW(popUp, MF_STRING | MF_CHECKED, 1029, u"Forgot");
        device.ForgetCalls();
    }

    void TearDown() override {
        DestroyMenu(menu);
        DialogTest::TearDown();
    }

    static std::u16string TextOf(HMENU handle, UINT position, UINT size = 100) {
        WCHAR buffer[100] = u"?";
        MENUITEMINFOW info = Info(MIIM_TYPE, buffer, size);
        return GetMenuItemInfoW(handle, position, TRUE, &info) ? buffer : u"none";
    }

    HMENU menu = nullptr;
    HMENU popUp = nullptr;
};

}  // namespace

TEST_F(Menus, ItemsAreFoundByPositionAndByCommandInSubMenusToo) {
    EXPECT_EQ(u"Done", TextOf(menu, 0));
    EXPECT_EQ(u"Menu", TextOf(menu, 1));
    EXPECT_EQ(u"none", TextOf(menu, 2));
    EXPECT_EQ(DWORD{ERROR_MENU_ITEM_NOT_FOUND}, GetLastError());
    MENUITEMINFOW info = Info(MIIM_STATE | MIIM_ID);
    EXPECT_TRUE(GetMenuItemInfoW(menu, 1029, FALSE, &info));
    EXPECT_EQ(1029u, info.wID);
    EXPECT_EQ(UINT{MFS_CHECKED}, info.fState);
    EXPECT_FALSE(GetMenuItemInfoW(menu, 4711, FALSE, &info));
    EXPECT_EQ(
        (Lines{
            "GetMenuItemInfoW(menu 1, 0, TRUE, {size ok, mask 0x10, type 0x0, room 100}) = "
            R"(TRUE, type 0x0, "Done")",
            "GetMenuItemInfoW(menu 1, 1, TRUE, {size ok, mask 0x10, type 0x0, room 100}) = "
            R"(TRUE, type 0x0, "Menu")",
            "GetMenuItemInfoW(menu 1, 2, TRUE, {size ok, mask 0x10, type 0x0, room 100}) = FALSE, error 1456",
            "GetMenuItemInfoW(menu 1, 1029, FALSE, {size ok, mask 0x3}) = TRUE, state 0x8, id 1029",
            "GetMenuItemInfoW(menu 1, 4711, FALSE, {size ok, mask 0x3}) = FALSE, error 1456"}),
        device.Calls());
}

TEST_F(Menus, ExistenceIsAskedForWithoutFields) {
    MENUITEMINFOW info = Info(0);
    EXPECT_TRUE(GetMenuItemInfoW(menu, 1, TRUE, &info));
    EXPECT_FALSE(GetMenuItemInfoW(menu, 2, TRUE, &info));
}

TEST_F(Menus, TextIsCutToTheBufferAndItsLengthIsReturned) {
    EXPECT_EQ(u"Do", TextOf(menu, 0, 3));
    WCHAR buffer[10];
    MENUITEMINFOW info = Info(MIIM_TYPE, buffer, 3);
    GetMenuItemInfoW(menu, 0, TRUE, &info);
    EXPECT_EQ(2u, info.cch);
    info = Info(MIIM_STRING);
    GetMenuItemInfoW(menu, 0, TRUE, &info);
    EXPECT_EQ(4u, info.cch) << "without a buffer, the whole text's";
}

TEST_F(Menus, SeparatorHasNoTextAndTakesTheCallersPointer) {
    WCHAR buffer[10] = u"?";
    MENUITEMINFOW info = Info(MIIM_TYPE, buffer, 10);
    EXPECT_TRUE(GetMenuItemInfoW(popUp, 1, TRUE, &info));
    EXPECT_EQ(UINT{MFT_SEPARATOR}, info.fType);
    EXPECT_EQ(nullptr, info.dwTypeData);
    EXPECT_EQ(u"?", std::u16string(buffer));
}

TEST_F(Menus, SizesOfOlderAndNewerSystemsAreTaken) {
    MENUITEMINFOW info = Info(MIIM_ID);
    info.hbmpItem = reinterpret_cast<HBITMAP>(uintptr_t{0x55});
    EXPECT_TRUE(GetMenuItemInfoW(menu, 0, TRUE, &info));
    EXPECT_EQ(reinterpret_cast<HBITMAP>(uintptr_t{0x55}), info.hbmpItem) << "not the older structure's";
    info.cbSize = sizeof info;
    EXPECT_TRUE(GetMenuItemInfoW(menu, 0, TRUE, &info));
    info.cbSize = 7;
    EXPECT_FALSE(GetMenuItemInfoW(menu, 0, TRUE, &info));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, GetLastError());
    EXPECT_FALSE(SetMenuItemInfoW(menu, 0, TRUE, &info));
}

TEST_F(Menus, NewTextResetsTheTypeAndKeepsTheRest) {
    MENUITEMINFOW info = Info(MIIM_TYPE);
    info.fType = MFT_RADIOCHECK;
    WCHAR old[] = u"Old";
    info.dwTypeData = old;
    EXPECT_TRUE(SetMenuItemInfoW(popUp, 2, TRUE, &info));
    info.fType = MFT_STRING;
    WCHAR text[] = u"Oubli\xE9";
    info.dwTypeData = text;
    EXPECT_TRUE(SetMenuItemInfoW(popUp, 2, TRUE, &info));
    WCHAR buffer[10];
    info = Info(MIIM_TYPE | MIIM_STATE | MIIM_ID, buffer, 10);
    EXPECT_TRUE(GetMenuItemInfoW(popUp, 2, TRUE, &info));
    EXPECT_EQ(UINT{MFT_STRING}, info.fType);
    EXPECT_EQ(UINT{MFS_CHECKED}, info.fState);
    EXPECT_EQ(1029u, info.wID);
    EXPECT_EQ(u"Oubli\xE9", std::u16string(buffer));
    EXPECT_EQ(
        (Lines{R"(SetMenuItemInfoW(menu 2, 2, TRUE, {size ok, mask 0x10, type 0x200, text "Old"}) = TRUE)",
               "SetMenuItemInfoW(menu 2, 2, TRUE, "
               R"({size ok, mask 0x10, type 0x0, text "Oubli<U+00E9>"}) = TRUE)"}),
        device.Calls({"SetMenuItemInfoW"}));
}

TEST_F(Menus, StateAndIdAreSetAlone) {
    MENUITEMINFOW info = Info(MIIM_STATE | MIIM_ID);
    info.fState = MFS_GRAYED;
    info.wID = 5;
    EXPECT_TRUE(SetMenuItemInfoW(menu, 1, FALSE, &info));
    EXPECT_EQ(u"Done", TextOf(menu, 0));
    info = Info(MIIM_STATE);
    EXPECT_TRUE(GetMenuItemInfoW(menu, 5, FALSE, &info));
    EXPECT_EQ(UINT{MFS_GRAYED}, info.fState);
}

TEST_F(Menus, SubMenuIsAtItsPosition) {
    EXPECT_EQ(popUp, GetSubMenu(menu, 1));
    EXPECT_EQ(nullptr, GetSubMenu(menu, 0));
    EXPECT_EQ(nullptr, GetSubMenu(menu, -1));
    MENUITEMINFOW info = Info(MIIM_SUBMENU);
    EXPECT_TRUE(GetMenuItemInfoW(menu, 1, TRUE, &info));
    EXPECT_EQ(popUp, info.hSubMenu);
    EXPECT_EQ("GetSubMenu(menu 1, 1) = menu 2", device.Calls({"GetSubMenu"})[0]);
}

TEST_F(Menus, SubMenusGoWithTheirMenu) {
    const HMENU other = CreateMenu();
    const HMENU inner = CreateMenu();
    AppendMenuW(other, MF_POPUP, reinterpret_cast<UINT_PTR>(inner), u"Inner");
    EXPECT_TRUE(DestroyMenu(other));
    EXPECT_EQ(nullptr, GetSubMenu(inner, 0));
    EXPECT_EQ(Lines{"GetSubMenu(closed menu 4, 0): closed menu 4 is not open"}, TakeViolations());
}

TEST_F(Menus, NullAndWrongHandles) {
    MENUITEMINFOW info = Info(0);
    EXPECT_FALSE(GetMenuItemInfoW(nullptr, 0, TRUE, &info));
    EXPECT_EQ(DWORD{ERROR_INVALID_MENU_HANDLE}, GetLastError());
    EXPECT_FALSE(SetMenuItemInfoW(nullptr, 0, TRUE, &info));
    EXPECT_EQ(nullptr, GetSubMenu(nullptr, 0));
    EXPECT_FALSE(DestroyMenu(reinterpret_cast<HMENU>(uintptr_t{0x99})));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(Menus, MenuLeftAtTheEndIsOneViolation) {
    const HMENU other = CreateMenu();
    AppendMenuW(other, MF_POPUP, reinterpret_cast<UINT_PTR>(CreateMenu()), u"Inner");
    DestroyMenu(menu);
    device.EndTest();
    EXPECT_EQ(Lines{"menu 3 is still open at the end of the test"}, TakeViolations());
    device.BeginTest();
    menu = CreateMenu();
}
