#include <algorithm>
#include <cstring>

#include "DialogTest.h"

namespace {

constexpr uint16_t menuType = 4;
constexpr uint16_t dataType = 10;

class MenuBars : public DialogTest {
protected:
    /* Shows template 100 with that menu bar and does that in it. */
    void WithBar(UINT id, const DialogScript& script) {
        dialog.HasBar(id);
        User([&](DialogUser& user) {
            script(user);
            if (user.IsOpen()) Cancel(user);
        });
        dialog.Run();
    }

    /* The error with which making that bar fails; 0 when it does not. */
    DWORD ErrorOf(SHMENUBARINFO info) {
        DWORD error = 0;
        SampleDialog shown;
        shown.On(WM_INITDIALOG, [&](HWND window, WPARAM, LPARAM) {
            info.hwndParent = window;
            SetLastError(0);
            if (!SHCreateMenuBar(&info)) error = GetLastError();
            return TRUE;
        });
        User(Cancel);
        shown.Run();
        return error;
    }

    SHMENUBARINFO InfoOf(UINT id) const {
        SHMENUBARINFO info{};
        info.cbSize = sizeof info;
        info.dwFlags = SHCMBF_HMENU;
        info.nToolBarId = id;
        info.hInstRes = device.LibraryInstance();
        return info;
    }

    static TBBUTTONINFOW ButtonInfo(DWORD mask, WCHAR* text = nullptr, int size = 0) {
        TBBUTTONINFOW info{};
        info.cbSize = sizeof info;
        info.dwMask = mask;
        info.pszText = text;
        info.cchText = size;
        return info;
    }

    LRESULT Ask(UINT message, WPARAM wParam, TBBUTTONINFOW& info) const {
        return SendMessageW(dialog.bar, message, wParam, reinterpret_cast<LPARAM>(&info));
    }

    SampleDialog dialog;
};

}  // namespace

TEST_F(MenuBars, ButtonsComeFromTheLayoutAndTheStrings) {
    WithBar(115, [&](DialogUser& user) {
        const auto buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Done", buttons[0].text);
        EXPECT_EQ(1, buttons[0].command);
        EXPECT_TRUE(buttons[0].isEnabled);
        EXPECT_EQ(u"Cancel", buttons[1].text);
        EXPECT_EQ(2, SendMessageW(dialog.bar, TB_BUTTONCOUNT, 0, 0));
        TBBUTTON button{};
        EXPECT_TRUE(SendMessageW(dialog.bar, TB_GETBUTTON, 1, reinterpret_cast<LPARAM>(&button)));
        EXPECT_EQ(2, button.idCommand);
        EXPECT_EQ(65534, button.iBitmap);
        EXPECT_EQ(4, button.fsState);
        EXPECT_EQ(16, button.fsStyle);
        EXPECT_FALSE(SendMessageW(dialog.bar, TB_GETBUTTON, 2, reinterpret_cast<LPARAM>(&button)));
    });
    EXPECT_EQ(Lines{"SHCreateMenuBar({size ok, parent dialog 1, flags 0x10, id 115, library}) = TRUE, bar 1"},
              device.Calls({"SHCreateMenuBar"}));
    EXPECT_EQ((Lines{"SendMessageW(bar 1, TB_BUTTONCOUNT, 0x0, 0x0) = 2",
                     "SendMessageW(bar 1, TB_GETBUTTON, 1) = 1, command 2",
                     "SendMessageW(bar 1, TB_GETBUTTON, 2) = 0"}),
              device.Calls({"SendMessageW"}));
}

TEST_F(MenuBars, PopUpDropsDownFromItsButton) {
    WithBar(116, [&](DialogUser& user) {
        const auto buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_TRUE(buttons[0].menu.empty());
        EXPECT_EQ(0, buttons[1].command);
        const auto& items = buttons[1].menu;
        ASSERT_EQ(6u, items.size());
        EXPECT_EQ(u"First", items[0].text);
        EXPECT_EQ(1016u, items[0].command);
        EXPECT_TRUE(items[1].isSeparator);
        EXPECT_FALSE(items[2].isEnabled);
        EXPECT_TRUE(items[3].isChecked);
        EXPECT_EQ(u"Deep", items[4].items.at(0).text);
        const auto menu = reinterpret_cast<HMENU>(SendMessageW(dialog.bar, SHCMBM_GETMENU, 0, 0));
        EXPECT_NE(nullptr, GetSubMenu(menu, 1));
        EXPECT_EQ(nullptr, GetSubMenu(menu, 0));
    });
    EXPECT_EQ(Lines{"SendMessageW(bar 1, SHCMBM_GETMENU, 0x0, 0x0) = menu 1"},
              device.Calls({"SendMessageW"}));
}

TEST_F(MenuBars, WithoutALayoutTheMenusTopBecomesTheButtons) {
    WithBar(117, [](DialogUser& user) {
        const auto buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Done", buttons[0].text);
        EXPECT_EQ(1, buttons[0].command);
        EXPECT_EQ(u"Menu", buttons[1].text);
        ASSERT_EQ(3u, buttons[1].menu.size());
        EXPECT_EQ(u"Radio", buttons[1].menu[0].text);
        EXPECT_TRUE(buttons[1].menu[0].isChecked);
        EXPECT_TRUE(buttons[1].menu[1].isSeparator);
        EXPECT_FALSE(buttons[1].menu[2].isEnabled);
    });
}

TEST_F(MenuBars, TextIsReadAndWrittenAndTheCommandIsKept) {
    WithBar(115, [&](DialogUser& user) {
        WCHAR buffer[255] = {};
        TBBUTTONINFOW info = ButtonInfo(TBIF_TEXT | TBIF_COMMAND, buffer, 255);
        EXPECT_EQ(0, Ask(TB_GETBUTTONINFOW, 1, info));
        EXPECT_EQ(u"Done", std::u16string(buffer));
        EXPECT_EQ(1, info.idCommand);
        WCHAR text[] = u"Fini";
        info = ButtonInfo(TBIF_TEXT | TBIF_COMMAND, text, 4);
        EXPECT_EQ(1, Ask(TB_SETBUTTONINFOW, 1, info));
        EXPECT_EQ(u"Fini", user.MenuBar().at(0).text);
        EXPECT_EQ(1, user.MenuBar().at(0).command);
    });
    const Lines expected = {
        "SendMessageW(bar 1, TB_GETBUTTONINFOW, 1, {size ok, mask 0x22, room 255}) = "
        R"(0, command 1, text "Done")",
        "SendMessageW(bar 1, TB_SETBUTTONINFOW, 1, "
        R"({size ok, mask 0x22, command 0, text "Fini", length 4}) = 1)"};
    EXPECT_EQ(expected, device.Calls({"SendMessageW"}));
}

TEST_F(MenuBars, ButtonInformationFitsTheBufferAndTheStructure) {
    WithBar(115, [&](DialogUser&) {
        WCHAR buffer[4] = u"???";
        TBBUTTONINFOW info = ButtonInfo(TBIF_TEXT, buffer, 3);
        EXPECT_EQ(1, Ask(TB_GETBUTTONINFOW, 2, info));
        EXPECT_EQ(u"Ca", std::u16string(buffer));
        EXPECT_EQ(-1, Ask(TB_GETBUTTONINFOW, 4711, info));
        EXPECT_EQ(0, Ask(TB_SETBUTTONINFOW, 4711, info));
        info = ButtonInfo(TBIF_BYINDEX | TBIF_COMMAND | TBIF_STATE);
        EXPECT_EQ(1, Ask(TB_GETBUTTONINFOW, 1, info));
        EXPECT_EQ(2, info.idCommand);
        EXPECT_EQ(TBSTATE_ENABLED, info.fsState);
        info.cbSize = 12;
        EXPECT_EQ(-1, Ask(TB_GETBUTTONINFOW, 1, info));
        EXPECT_EQ(0, Ask(TB_SETBUTTONINFOW, 1, info));
        EXPECT_EQ(-1, SendMessageW(dialog.bar, TB_GETBUTTONINFOW, 1, 0));
    });
}

TEST_F(MenuBars, ButtonsAreEnabledAndDisabled) {
    WithBar(115, [&](DialogUser& user) {
        EXPECT_EQ(1, SendMessageW(dialog.bar, TB_ENABLEBUTTON, 1, MAKELPARAM(FALSE, 0)));
        EXPECT_EQ(0, SendMessageW(dialog.bar, TB_ISBUTTONENABLED, 1, 0));
        EXPECT_FALSE(user.MenuBar().at(0).isEnabled);
        EXPECT_EQ(1, SendMessageW(dialog.bar, TB_ENABLEBUTTON, 1, MAKELPARAM(TRUE, 0)));
        EXPECT_TRUE(user.MenuBar().at(0).isEnabled);
        EXPECT_EQ(1, SendMessageW(dialog.bar, TB_COMMANDTOINDEX, 2, 0));
        EXPECT_EQ(0, SendMessageW(dialog.bar, TB_ENABLEBUTTON, 4711, 0));
    });
}

TEST_F(MenuBars, BarIsOwnedByItsDialogAndGoesWithIt) {
    HMENU menu = nullptr;
    WithBar(116, [&](DialogUser& user) {
        EXPECT_EQ(user.Window(), GetParent(dialog.bar));
        menu = reinterpret_cast<HMENU>(SendMessageW(dialog.bar, SHCMBM_GETMENU, 0, 0));
        for (HWND child = GetWindow(user.Window(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            EXPECT_NE(dialog.bar, child);
    });
    EXPECT_FALSE(IsWindow(dialog.bar));
    EXPECT_EQ(nullptr, GetSubMenu(menu, 1));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(MenuBars, MissingOrDamagedResourcesFail) {
    EXPECT_EQ(0u, ErrorOf(InfoOf(115)));
    EXPECT_EQ(DWORD{ERROR_RESOURCE_NAME_NOT_FOUND}, ErrorOf(InfoOf(999)));
    for (const UINT id : {120u, 121u, 122u, 123u})
        EXPECT_EQ(DWORD{ERROR_INVALID_DATA}, ErrorOf(InfoOf(id))) << id;
}

TEST_F(MenuBars, EveryTruncatedMenuOrLayoutFails) {
    for (const auto& [type, id] :
         {std::pair{menuType, uint16_t{116}}, {menuType, uint16_t{117}}, {dataType, uint16_t{116}}}) {
        auto resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
        std::string& bytes = BytesOf(resources, type, id);
        const std::string whole = bytes;
        for (size_t size = 0; size < whole.size(); ++size) {
            bytes = whole.substr(0, size);
            device.SetResources(device.LibraryInstance(), resources);
            ASSERT_EQ(DWORD{ERROR_INVALID_DATA}, ErrorOf(InfoOf(id)))
                << type << " " << id << " cut to " << size;
        }
    }
}

TEST_F(MenuBars, MenusWithoutEndInEachOtherFail) {
    auto resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
    std::string bytes(4, '\0');
    for (int i = 0; i < 10000; ++i)
        bytes += std::string("\x90\0x\0\0\0", 6);
    BytesOf(resources, menuType, 115) = bytes;
    device.SetResources(device.LibraryInstance(), resources);
    EXPECT_EQ(DWORD{ERROR_INVALID_DATA}, ErrorOf(InfoOf(115)));
}

TEST_F(MenuBars, StructureMustBeRight) {
    SHMENUBARINFO info = InfoOf(115);
    info.cbSize = 35;
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, ErrorOf(info));
    EXPECT_FALSE(SHCreateMenuBar(nullptr));
    info = InfoOf(115);
    EXPECT_FALSE(SHCreateMenuBar(&info)) << "no parent";
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    info.dwFlags = 0;
    ErrorOf(info);
    EXPECT_EQ(1u, TakeViolations().size()) << "bars of another kind are not simulated";
}

TEST_F(MenuBars, SecondBarOfADialogIsAViolation) {
    WithBar(115, [](DialogUser& user) {
        EXPECT_EQ(nullptr, SampleDialog::MakeBar(user.Window(), 115));
        EXPECT_EQ(Lines{"SHCreateMenuBar({size ok, parent dialog 1, flags 0x10, id 115, library}): dialog 1 "
                        "has a menu "
                        "bar already"},
                  TakeViolations());
    });
}

TEST_F(MenuBars, FullScreenIsTheScreenLessTheBarsAndIsTold) {
    LPARAM size = 0;
    dialog.On(WM_SIZE, [&](HWND, WPARAM, LPARAM lParam) {
        size = lParam;
        return TRUE;
    });
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        SHINITDLGINFO info{SHIDIM_FLAGS, window, SHIDIF_SIZEDLGFULLSCREEN};
        EXPECT_TRUE(SHInitDialog(&info));
        return TRUE;
    });
    User([](DialogUser& user) {
        const RECT place = user.Look().place;
        EXPECT_EQ(0, place.left);
        EXPECT_EQ(26, place.top);
        EXPECT_EQ(240, place.right);
        EXPECT_EQ(294, place.bottom);
        Cancel(user);
    });
    dialog.Run();
    EXPECT_EQ(MAKELPARAM(240, 268), size);
    EXPECT_EQ(Lines{"SHInitDialog({mask 0x1, dialog 1, flags 0x4}) = TRUE"}, device.Calls({"SHInitDialog"}));
}

TEST_F(MenuBars, DialogKeepsItsSizeWithoutTheFlagOrItsMask) {
    dialog.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) {
        SHINITDLGINFO info{SHIDIM_FLAGS, window, 0};
        EXPECT_TRUE(SHInitDialog(&info));
        info = {0, window, SHIDIF_SIZEDLGFULLSCREEN};
        EXPECT_TRUE(SHInitDialog(&info));
        info.hDlg = nullptr;
        EXPECT_FALSE(SHInitDialog(&info));
        return TRUE;
    });
    User([](DialogUser& user) {
        EXPECT_EQ(15, user.Look().place.left);
        Cancel(user);
    });
    dialog.Run();
    EXPECT_EQ(0, std::count(dialog.messages.begin(), dialog.messages.end(), UINT{WM_SIZE}));
}

TEST_F(MenuBars, BackKeyIsHandedToTheFocusedField) {
    WithBar(115, [](DialogUser& user) {
        user.Type(1001, u"abc");
        SHSendBackToFocusWindow(WM_HOTKEY, 0, MAKELPARAM(0, VK_ESCAPE));
        EXPECT_EQ(u"ab", user.Text(1001));
        user.Tap(1020);
        SHSendBackToFocusWindow(WM_HOTKEY, 0, MAKELPARAM(0, VK_ESCAPE));
        EXPECT_EQ(u"ab", user.Text(1001));
    });
    const std::string call = "SHSendBackToFocusWindow(WM_HOTKEY, 0x0, 0x1B0000)";
    EXPECT_EQ((Lines{call, call}), device.Calls({"SHSendBackToFocusWindow"}));
}
