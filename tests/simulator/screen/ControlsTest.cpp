#include "DialogTest.h"

namespace {

class Controls : public DialogTest {
protected:
    /* Shows template 100 and does that in it. */
    void InDialog(const DialogScript& script) {
        User([&](DialogUser& user) {
            dialog.commands.clear();
            script(user);
            Cancel(user);
        });
        dialog.Run();
    }

    SampleDialog dialog;
};

}  // namespace

TEST_F(Controls, TextOfAProgramReplacesAllAndIsReported) {
    InDialog([&](DialogUser& user) {
        SetDlgItemTextW(user.Window(), 1001, u"text");
        EXPECT_EQ(u"text", user.Text(1001));
        EXPECT_EQ((Lines{"1001:1024", "1001:768"}), dialog.commands) << "EN_UPDATE, EN_CHANGE";
        EXPECT_EQ(GetDlgItem(user.Window(), 1001), dialog.commandWindow);
    });
}

TEST_F(Controls, TypingIsReportedUnitByUnit) {
    InDialog([&](DialogUser& user) {
        user.Type(1001, u"ab");
        EXPECT_EQ((Lines{"1001:1024", "1001:768", "1001:1024", "1001:768"}), dialog.commands);
    });
}

TEST_F(Controls, PasswordIsHiddenFromTheUserAndKnownToTheProgram) {
    InDialog([](DialogUser& user) {
        user.Type(1003, u"secret");
        EXPECT_EQ(u"******", user.Text(1003));
        EXPECT_TRUE(user.Control(1003).isPassword);
        WCHAR text[10];
        EXPECT_EQ(6u, GetDlgItemTextW(user.Window(), 1003, text, 10));
        EXPECT_EQ(u"secret", std::u16string(text));
        EXPECT_EQ(u'*', user.SendTo(1003, EM_GETPASSWORDCHAR, 0, 0));
        user.SendTo(1003, EM_SETPASSWORDCHAR, 0, 0);
        EXPECT_EQ(u"secret", user.Text(1003));
    });
}

TEST_F(Controls, LimitHoldsForTypingAlone) {
    InDialog([&](DialogUser& user) {
        EXPECT_EQ(30000, user.SendTo(1001, EM_GETLIMITTEXT, 0, 0));
        user.SendTo(1001, EM_LIMITTEXT, 3, 0);
        user.Type(1001, u"abcd");
        EXPECT_EQ(u"abc", user.Text(1001));
        EXPECT_EQ("1001:1281", dialog.commands.at(6)) << "EN_MAXTEXT";
        SetDlgItemTextW(user.Window(), 1001, u"longer");
        EXPECT_EQ(u"longer", user.Text(1001));
        user.TypeOn(u"!");
        EXPECT_EQ(u"longer", user.Text(1001));
        user.SendTo(1001, EM_LIMITTEXT, 0, 0);
        user.TypeOn(u"!");
        EXPECT_EQ(u"longer!", user.Text(1001));
    });
}

TEST_F(Controls, DefaultLimitIsThirtyThousand) {
    InDialog([&](DialogUser& user) {
        SetDlgItemTextW(user.Window(), 1001, std::u16string(29999, u'x').c_str());
        user.TypeOn(u"a");
        EXPECT_EQ(30000, user.SendTo(1001, WM_GETTEXTLENGTH, 0, 0));
        user.TypeOn(u"b");
        EXPECT_EQ(30000, user.SendTo(1001, WM_GETTEXTLENGTH, 0, 0));
    });
}

TEST_F(Controls, TypingReplacesTheSelection) {
    InDialog([](DialogUser& user) {
        user.Type(1001, u"abcdef");
        user.SendTo(1001, EM_SETSEL, 1, 3);
        DWORD start = 0;
        DWORD end = 0;
        user.SendTo(1001, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(1u, start);
        EXPECT_EQ(3u, end);
        user.TypeOn(u"X");
        EXPECT_EQ(u"aXdef", user.Text(1001));
        user.SendTo(1001, EM_SETSEL, 99, 100);
        user.SendTo(1001, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(u"gh"));
        EXPECT_EQ(u"aXdefgh", user.Text(1001));
    });
}

TEST_F(Controls, BackspaceDeletesTheSelectionOrTheUnitBefore) {
    InDialog([&](DialogUser& user) {
        user.Type(1001, u"abc");
        user.SendTo(1001, WM_CHAR, VK_BACK, 1);
        EXPECT_EQ(u"ab", user.Text(1001));
        user.SendTo(1001, EM_SETSEL, 0, -1);
        user.SendTo(1001, WM_CHAR, VK_BACK, 1);
        EXPECT_EQ(u"", user.Text(1001));
        dialog.commands.clear();
        user.SendTo(1001, WM_CHAR, VK_BACK, 1);
        EXPECT_EQ(Lines{}, dialog.commands) << "nothing changed";
    });
}

TEST_F(Controls, ControlCharactersAndReadOnlyFieldsTakeNothing) {
    InDialog([](DialogUser& user) {
        user.SendTo(1001, WM_CHAR, 13, 1);
        user.SendTo(1001, WM_CHAR, 27, 1);
        EXPECT_EQ(u"", user.Text(1001));
        user.SendTo(1024, WM_CHAR, u'a', 1);
        EXPECT_EQ(u"", user.Text(1024));
        user.SendTo(1024, EM_SETREADONLY, FALSE, 0);
        user.SendTo(1024, WM_CHAR, u'a', 1);
        EXPECT_EQ(u"a", user.Text(1024));
    });
}

TEST_F(Controls, FocusOfAnEditFieldIsReported) {
    InDialog([&](DialogUser& user) {
        user.Tap(1003);
        EXPECT_EQ((Lines{"1001:512", "1003:256"}), dialog.commands) << "EN_KILLFOCUS, EN_SETFOCUS";
        EXPECT_EQ(1003, user.Focus());
    });
}

TEST_F(Controls, CheckBoxChangesByItselfWhenItIsPressed) {
    InDialog([&](DialogUser& user) {
        EXPECT_EQ(BST_UNCHECKED, user.SendTo(1017, BM_GETCHECK, 0, 0));
        user.Tap(1017);
        EXPECT_EQ(BST_CHECKED, user.SendTo(1017, BM_GETCHECK, 0, 0));
        EXPECT_TRUE(user.IsChecked(1017));
        EXPECT_EQ("1017:0", dialog.commands.back());
        user.SendTo(1017, BM_CLICK, 0, 0);
        EXPECT_FALSE(user.IsChecked(1017));
        user.SendTo(1017, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_TRUE(user.IsChecked(1017));
        user.SendTo(1017, WM_CHAR, u' ', 1);
        EXPECT_FALSE(user.IsChecked(1017));
    });
}

TEST_F(Controls, PushButtonReportsTheClickAndHasNoCheck) {
    InDialog([&](DialogUser& user) {
        user.SendTo(1020, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_EQ(BST_UNCHECKED, user.SendTo(1020, BM_GETCHECK, 0, 0));
        user.Tap(1020);
        EXPECT_EQ("1020:0", dialog.commands.back());
        EXPECT_EQ(GetDlgItem(user.Window(), 1020), dialog.commandWindow);
    });
}

TEST_F(Controls, ReleaseWithoutAPressIsNoClick) {
    InDialog([&](DialogUser& user) {
        user.SendTo(1020, WM_LBUTTONUP, 0, 0);
        EXPECT_EQ(Lines{}, dialog.commands);
    });
}

TEST_F(Controls, CodesTellTheKindsApart) {
    InDialog([](DialogUser& user) {
        EXPECT_EQ(DLGC_STATIC, user.SendTo(0xFFFF, WM_GETDLGCODE, 0, 0));
        EXPECT_EQ(DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, user.SendTo(1020, WM_GETDLGCODE, 0, 0));
        EXPECT_EQ(DLGC_BUTTON | DLGC_DEFPUSHBUTTON, user.SendTo(1021, WM_GETDLGCODE, 0, 0));
        EXPECT_EQ(DLGC_BUTTON, user.SendTo(1017, WM_GETDLGCODE, 0, 0));
        EXPECT_NE(0, user.SendTo(1001, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL);
        EXPECT_EQ(MAKELONG(1021, DC_HASDEFID), user.Send(DM_GETDEFID, 0, 0));
        user.Send(DM_SETDEFID, 1020, 0);
        EXPECT_EQ(MAKELONG(1020, DC_HASDEFID), user.Send(DM_GETDEFID, 0, 0));
    });
}
