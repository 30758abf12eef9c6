#include "ui/WindowTranslation.h"

#include <cstddef>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

namespace {

// The structures of the handheld, which natively have pointers of another size.
static_assert(sizeof(void*) != 4 || (offsetof(MENUITEMINFOW, hbmpItem) == 44 && sizeof(TBBUTTONINFOW) == 32));

class WindowTranslation : public ScreenTest {
protected:
    /* A menu of the test's own. */
    class Menu {
    public:
        Menu() : handle(CreateMenu()) {}
        Menu(const Menu&) = delete;
        Menu& operator=(const Menu&) = delete;
        ~Menu() { DestroyMenu(handle); }

        void Add(const WideString& text, UINT command, UINT flags = MF_STRING) const {
            ASSERT_TRUE(AppendMenuW(handle, flags, command, text.c_str()));
        }
        WideString Text(UINT position) const {
            WCHAR text[200]{};
            MENUITEMINFOW info = Info(MIIM_TYPE);
            info.dwTypeData = text;
            info.cch = 200;
            EXPECT_TRUE(GetMenuItemInfoW(handle, position, TRUE, &info));
            return text;
        }
        UINT Type(UINT position) const {
            MENUITEMINFOW info = Info(MIIM_TYPE);
            EXPECT_TRUE(GetMenuItemInfoW(handle, position, TRUE, &info));
            return info.fType;
        }
        static MENUITEMINFOW Info(UINT mask) {
            MENUITEMINFOW info{};
            info.cbSize = sizeof(info);
            info.fMask = mask;
            return info;
        }

        const HMENU handle;
    };
};

const std::vector<std::string> noCalls;

}  // namespace

TEST_F(WindowTranslation, DialogItsControlsItsButtonsAndItsPopUpAreAllTranslated) {
    Translate(
        "A form\tUn formulaire\nChoices\tChoix\nName\tNom\nRemember\tRetenir\nOpen\tOuvrir\n"
        "Sign in\tConnexion\nMenu\tCarte\nNew Account\tNouveau compte\nForgot\tOubli\nCancel\tAnnuler\n");
    FormDialog dialog;
    dialog.menuBarId = SIGN_IN_MENU_BAR;
    device.UseDialog([](DialogUser& user) {
        EXPECT_EQ(u"Un formulaire", user.Caption());
        EXPECT_EQ((std::vector<std::u16string>{u"Nom"}), user.Statics()) << "the colon is not put back";
        EXPECT_EQ(u"Choix", user.Text(FORM_GROUP));
        EXPECT_EQ(u"Retenir", user.Text(FORM_BOX));
        EXPECT_EQ(u"Ouvrir", user.Text(FORM_BUTTON));
        const std::vector<ShownButton> buttons = user.MenuBar();
        ASSERT_EQ(2u, buttons.size());
        EXPECT_EQ(u"Connexion", buttons[0].text);
        EXPECT_EQ(IDOK, buttons[0].command) << "a translated button keeps its command";
        EXPECT_EQ(u"Carte", buttons[1].text);
        ASSERT_EQ(3u, buttons[1].menu.size());
        EXPECT_EQ(u"Nouveau compte", buttons[1].menu[0].text);
        EXPECT_EQ(1016u, buttons[1].menu[0].command);
        EXPECT_EQ(u"Oubli", buttons[1].menu[1].text);
        EXPECT_EQ(u"Annuler", buttons[1].menu[2].text);
        user.ChooseMenuItem(u"Annuler");
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}

TEST_F(WindowTranslation, TextsWithoutATranslationAreNotTouchedAndAreCollected) {
    FormDialog dialog;
    dialog.menuBarId = SIGN_IN_MENU_BAR;
    device.UseDialog([](DialogUser& user) { user.ChooseMenuItem(IDCANCEL); });
    dialog.DoModal(nullptr);
    EXPECT_EQ(noCalls, device.Calls({"SetWindowTextW", "SetMenuItemInfoW"}));
    for (const std::string& call : device.Calls({"SendMessageW"}))
        EXPECT_EQ(std::string::npos, call.find("TB_SETBUTTONINFOW"));
    const std::set<WideString> expected = {TEXT("&Open..."), TEXT("A form"),      TEXT("Cancel"),
                                           TEXT("Choices:"), TEXT("Forgot"),      TEXT("Menu"),
                                           TEXT("Name:"),    TEXT("New Account"), TEXT("Remember"),
                                           TEXT("Sign In"),  TEXT("Sign in")};
    EXPECT_EQ(expected, translationCatalogue.UntranslatedTexts());
}

TEST_F(WindowTranslation, TextsThatTranslateToThemselvesAreNotTouched) {
    Translate("A form\tA form\nDone\tDone\nCancel\tCancel\n");
    FormDialog dialog;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    EXPECT_EQ(noCalls, device.Calls({"SetWindowTextW", "SetMenuItemInfoW"}));
    for (const std::string& call : device.Calls({"SendMessageW"}))
        EXPECT_EQ(std::string::npos, call.find("TB_SETBUTTONINFOW"));
}

TEST_F(WindowTranslation, ButtonIsRenamedWithItsTextItsLengthAndAZeroCommand) {
    Translate("Done\tTermin\xE9\n");
    FormDialog dialog;
    device.UseDialog(Cancel);
    dialog.DoModal(nullptr);
    size_t renamed = 0;
    for (const std::string& call : device.Calls({"SendMessageW"})) {
        if (call.find("TB_SETBUTTONINFOW") == std::string::npos) continue;
        ++renamed;
        EXPECT_EQ(
            "SendMessageW(bar 1, TB_SETBUTTONINFOW, 1, {size ok, mask 0x22, command 0, text "
            "\"Termin<U+00E9>\", "
            "length 7}) = 1",
            call);
    }
    EXPECT_EQ(1u, renamed);
}

TEST_F(WindowTranslation, ButtonWithoutATextIsPassedOver) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        dialog.SetMenuBarButtonText(IDOK, {});
        TranslateToolbar(dialog.menuBarWindow);
        EXPECT_EQ(0u, translationCatalogue.UntranslatedTexts().count(TEXT("")));
        EXPECT_EQ(u"", user.MenuBar()[0].text);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(WindowTranslation, TextOfAWindowIsReadUpTo4999Units) {
    const WideString longText(4999, u'x');
    translationCatalogue.SetLanguage(TEXT("English"), {});
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        dialog.SetItemText(FORM_FIELD, longText + TEXT("and more"));
        EXPECT_TRUE(TranslateWindowText(GetDlgItem(user.Window(), FORM_FIELD)));
        EXPECT_EQ(1u, translationCatalogue.UntranslatedTexts().count(longText));
        EXPECT_EQ(longText + TEXT("and more"), dialog.GetItemText(FORM_FIELD));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(WindowTranslation, EachWindowIsTranslatedBeforeWhatIsInItAndThatBeforeItsSibling) {
    FormDialog dialog;
    device.UseDialog([this](DialogUser& user) {
        Translate("A form\tA\nChoices\tB\nDeep\tC\nName\tD\n");
        CreateWindowExW(0, TEXT("static"), TEXT("Deep"), WS_CHILD, 0, 0, 9, 9,
                        GetDlgItem(user.Window(), FORM_GROUP), nullptr, nullptr, nullptr);
        device.ForgetCalls();
        TranslateWindowTree(user.Window());
        std::string order;
        for (const std::string& call : device.Calls({"SetWindowTextW"}))
            order += call[call.find('"') + 1];
        EXPECT_EQ("ABCD", order);
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(WindowTranslation, WindowWithoutATextIsPassedOver) {
    FormDialog dialog;
    device.UseDialog([&](DialogUser& user) {
        device.ForgetCalls();
        EXPECT_TRUE(TranslateWindowText(GetDlgItem(user.Window(), FORM_FIELD)));
        EXPECT_TRUE(TranslateWindowText(nullptr));
        EXPECT_EQ(noCalls, device.Calls({"SetWindowTextW"}));
        EXPECT_EQ(0u, translationCatalogue.UntranslatedTexts().count(TEXT("")));
        Cancel(user);
    });
    dialog.DoModal(nullptr);
}

TEST_F(WindowTranslation, MenuIsTranslatedWithItsSubMenusAndSeparatorsAreSkipped) {
    Translate("Open\tOuvrir\nMore\tPlus\nDeep\tProfond\n");
    const Menu menu;
    const HMENU subMenu = CreateMenu();
    ASSERT_TRUE(AppendMenuW(subMenu, MF_STRING, 7, TEXT("Deep")));
    menu.Add(TEXT("&Open..."), 5);
    menu.Add({}, 0, MF_SEPARATOR);
    ASSERT_TRUE(AppendMenuW(menu.handle, MF_POPUP, reinterpret_cast<UINT_PTR>(subMenu), TEXT("More")));
    TranslateMenu(menu.handle);
    EXPECT_EQ(TEXT("Ouvrir"), menu.Text(0));
    EXPECT_EQ(UINT{MFT_SEPARATOR}, menu.Type(1));
    EXPECT_EQ(TEXT("Plus"), menu.Text(2));
    WCHAR text[20]{};
    MENUITEMINFOW info = Menu::Info(MIIM_TYPE);
    info.dwTypeData = text;
    info.cch = 20;
    ASSERT_TRUE(GetMenuItemInfoW(subMenu, 0, TRUE, &info));
    EXPECT_EQ(WideString(TEXT("Profond")), text);
    EXPECT_EQ(subMenu, GetSubMenu(menu.handle, 2));
    std::string order;
    for (const std::string& call : device.Calls({"SetMenuItemInfoW"}))
        order += call.substr(call.find("text \"") + 6, 2);
    EXPECT_EQ("OuPlPr", order) << "an item comes before its sub-menu";
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
}

TEST_F(WindowTranslation, TranslatedItemBecomesAPlainTextItemOthersKeepTheirType) {
    Translate("Open\tOuvrir\n");
    const Menu menu;
    menu.Add(TEXT("Open"), 5, MF_STRING | MF_MENUBARBREAK);
    menu.Add(TEXT("Other"), 6, MF_STRING | MF_MENUBARBREAK);
    TranslateMenu(menu.handle);
    EXPECT_EQ(UINT{MFT_STRING}, menu.Type(0));
    EXPECT_EQ(UINT{MFT_STRING | MFT_MENUBARBREAK}, menu.Type(1));
}

TEST_F(WindowTranslation, OnlyTheFirst256ItemsOfAMenuAreTranslated) {
    Translate("Open\tOuvrir\n");
    const Menu menu;
    for (UINT i = 0; i < 300; ++i)
        menu.Add(TEXT("Open"), 1000 + i);
    TranslateMenu(menu.handle);
    EXPECT_EQ(TEXT("Ouvrir"), menu.Text(255));
    EXPECT_EQ(TEXT("Open"), menu.Text(256));
}

TEST_F(WindowTranslation, ItemTextIsReadUpTo99Units) {
    const Menu menu;
    menu.Add(WideString(99, u'x') + TEXT("and more"), 5);
    TranslateMenu(menu.handle);
    EXPECT_EQ(1u, translationCatalogue.UntranslatedTexts().count(WideString(99, u'x')));
}

TEST_F(WindowTranslation, EmptyMenuAndNoMenuAreNothingToTranslate) {
    const Menu menu;
    TranslateMenu(menu.handle);
    TranslateMenu(nullptr);
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
}

TEST_F(WindowTranslation, NoTextIsReadWhileTheFirstItemCannotBeAskedFor) {
    const Menu menu;
    menu.Add(TEXT("Open"), 5);
    // The count takes two calls; the third asks for the first item again, before its text.
    device.FailCall("GetMenuItemInfoW", 3, ERROR_GEN_FAILURE);
    TranslateMenu(menu.handle);
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
    EXPECT_EQ(3u, device.CountCalls("GetMenuItemInfoW"));
    for (const std::string& call : device.Calls({"GetMenuItemInfoW"}))
        EXPECT_EQ(std::string::npos, call.find("mask 0x10")) << call;
}

TEST_F(WindowTranslation, ItemWhoseTextCannotBeReadIsPassedOver) {
    Translate("Open\tOuvrir\nOther\tAutre\n");
    const Menu menu;
    menu.Add(TEXT("Open"), 5);
    menu.Add(TEXT("Other"), 6);
    // The count takes three calls, and each item one before that for its text.
    device.FailCall("GetMenuItemInfoW", 5, ERROR_GEN_FAILURE);
    TranslateMenu(menu.handle);
    EXPECT_EQ(TEXT("Open"), menu.Text(0));
    EXPECT_EQ(TEXT("Autre"), menu.Text(1));
    EXPECT_TRUE(translationCatalogue.UntranslatedTexts().empty());
}

TEST_F(WindowTranslation, MenuIsAskedByPositionWithItsTextFieldsOnly) {
    Translate("Open\tOuvrir\n");
    const Menu menu;
    menu.Add(TEXT("Open"), 5);
    device.ForgetCalls();
    TranslateMenu(menu.handle);
    const std::vector<std::string> expected = {
        "GetMenuItemInfoW(menu 1, 0, TRUE, {size ok, mask 0x10, type 0x0, room 100}) = "
        R"(TRUE, type 0x0, "Open")",
        R"(SetMenuItemInfoW(menu 1, 0, TRUE, {size ok, mask 0x10, type 0x0, text "Ouvrir"}) = TRUE)"};
    std::vector<std::string> calls;
    for (const std::string& call : device.Calls({"GetMenuItemInfoW", "SetMenuItemInfoW"})) {
        if (call.find("mask 0x10") != std::string::npos)
            calls.push_back(call);
        else
            EXPECT_NE(std::string::npos, call.find("mask 0x0")) << "whether there is one: " << call;
    }
    EXPECT_EQ(expected, calls);
}
