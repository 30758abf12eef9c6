/* What is done to a dialog before the user sees it. */
#include "ui/DialogFixture.h"

TEST_F(DialogOnDevice, FillsTheScreenAndHasTheDefaultMenuBar) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(240, user.Look().place.right - user.Look().place.left);
        const std::vector<ShownButton> buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Done", buttons[0].text);
        EXPECT_EQ(IDOK, buttons[0].command);
        EXPECT_EQ(u"Cancel", buttons[1].text);
        EXPECT_EQ(IDCANCEL, buttons[1].command);
        EXPECT_EQ(user.Window(), dialog.window);
        EXPECT_NE(nullptr, dialog.menuBarWindow);
        EXPECT_NE(nullptr, dialog.commandMenu);
        EXPECT_EQ(FORM_FIELD, user.Focus());
        Cancel(user);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(nullptr, dialog.window);
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(DialogOnDevice, IsSetUpInOrderFromItsTextsToItsOwnInitialisation) {
    Translate("A form\tFormulaire\nCancel\tAnnuler\n");
    FormDialog dialog;
    dialog.onInit = [] { SetFocus(nullptr); };
    SetCursor(device.WaitCursor());
    device.UseDialog(Cancel);
    device.ForgetCalls();
    dialog.DoModal(nullptr);
    std::vector<std::string> calls =
        device.Calls({"FindResourceW", "SetWindowTextW", "SetCursor", "SHInitDialog", "SHCreateMenuBar",
                      "SendMessageW", "SetMenuItemInfoW", "SetFocus"});
    const std::vector<std::string> expected = {
        "FindResourceW(library, 202, RT_DIALOG) = resource",
        R"(SetWindowTextW(dialog 1, "Formulaire") = TRUE)",
        "SetCursor(null) = wait cursor",
        "SHInitDialog({mask 0x1, dialog 1, flags 0x4}) = TRUE",
        "SHCreateMenuBar({size ok, parent dialog 1, flags 0x10, id 115, library}) = TRUE, bar 1",
        "SendMessageW(bar 1, TB_BUTTONCOUNT, 0x0, 0x0) = 2",
        "SendMessageW(bar 1, TB_GETBUTTON, 0) = 1, command 1",
        "SendMessageW(bar 1, TB_GETBUTTONINFOW, 1, {size ok, mask 0x22, room 255}) = "
        R"(0, command 1, text "Done")",
        "SendMessageW(bar 1, TB_GETBUTTON, 1) = 1, command 2",
        "SendMessageW(bar 1, TB_GETBUTTONINFOW, 2, {size ok, mask 0x22, room 255}) = "
        R"(1, command 2, text "Cancel")",
        "SendMessageW(bar 1, TB_SETBUTTONINFOW, 2, "
        R"({size ok, mask 0x22, command 0, text "Annuler", length 7}) = 1)",
        "SendMessageW(bar 1, SHCMBM_OVERRIDEKEY, 27, 0x00030003) = 1",
        "SendMessageW(bar 1, SHCMBM_GETMENU, 0x0, 0x0) = menu 1",
        R"(SetMenuItemInfoW(menu 1, 1, TRUE, {size ok, mask 0x10, type 0x0, text "Annuler"}) = TRUE)",
        "SetFocus(null) = null"};
    calls.resize(std::min(calls.size(), expected.size()));
    EXPECT_EQ(expected, calls);
}

TEST_F(DialogOnDevice, InitFlagsAreTheDialogsOwn) {
    FormDialog dialog;
    dialog.initFlags = 0x21;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    EXPECT_EQ((std::vector<std::string>{"SHInitDialog({mask 0x1, dialog 1, flags 0x21}) = TRUE"}),
              device.Calls({"SHInitDialog"}));
}

TEST_F(DialogOnDevice, WithMenuBarZeroHasNoBarNoOverrideAndNothingToSetTheTextOf) {
    FormDialog dialog;
    dialog.menuBarId = 0;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_TRUE(user.MenuBar().empty());
        EXPECT_EQ(nullptr, dialog.menuBarWindow);
        EXPECT_EQ(nullptr, dialog.commandMenu);
        dialog.SetMenuBarButtonText(IDOK, TEXT("Never"));
        user.Send(WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    EXPECT_EQ(noCalls, device.Calls({"SHCreateMenuBar", "SendMessageW"}));
}

TEST_F(DialogOnDevice, WhoseMenuBarCannotBeMadeSaysSoAndIsDestroyed) {
    device.FailCall("SHCreateMenuBar", 1, ERROR_NOT_ENOUGH_MEMORY);
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog;
    bool isInitialised = false;
    dialog.onInit = [&] { isInitialised = true; };
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    EXPECT_FALSE(isInitialised);
    EXPECT_EQ(nullptr, dialog.window);
    ExpectBox(0, u"Failed to set up toolbar 115");
    EXPECT_EQ("dialog 1", device.MessageBoxes()[0].ownerName);
    ExpectBox(1, u"Dialog 202 failed: err=0x578");
}

TEST_F(DialogOnDevice, FocusIsNotTheSystemsToSetWhenTheMenuBarCannotBeMade) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        device.FailCall("SHCreateMenuBar", 1, ERROR_NOT_ENOUGH_MEMORY);
        ExpectMessage();
        const auto object = reinterpret_cast<LPARAM>(static_cast<Dialog*>(&dialog));
        EXPECT_EQ(FALSE, user.Send(WM_INITDIALOG, 0, object));
        EXPECT_FALSE(user.IsOpen());
    });
    dialog.DoModal(nullptr);
}

TEST_F(DialogOnDevice, MenuBarOfResDllIsTakenFromThere) {
    const HINSTANCE resDll = device.AddModule(u"Res.dll");
    device.SetResources(resDll, ReadResourceFile(ORVANDE_TEST_RESOURCES));
    ExpectMessage();
    ExpectMessage();
    FormDialog dialog;
    dialog.menuBarId = 5115;
    EXPECT_EQ(-1, dialog.DoModal(nullptr));
    ASSERT_EQ(1u, device.Calls({"SHCreateMenuBar"}).size());
    EXPECT_NE(std::string::npos, device.Calls({"SHCreateMenuBar"})[0].find("id 5115, Res.dll}) = FALSE"));
    ExpectBox(0, u"Failed to set up toolbar 5115");
}

TEST_F(DialogOnDevice, ShownAgainWithoutAMenuBarNoLongerKnowsTheOldOne) {
    FormDialog dialog;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    dialog.menuBarId = 0;
    device.UseDialog([&](DialogUser& user) {
        EXPECT_EQ(nullptr, dialog.menuBarWindow);
        EXPECT_EQ(nullptr, dialog.commandMenu);
        dialog.SetMenuBarButtonText(IDOK, TEXT("Never"));
        user.Send(WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}
