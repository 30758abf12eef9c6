#include "user/Users.h"

TEST_F(Users, SeesTheVisibleStatics) {
    InDialog(0, [](DialogUser& user) {
        EXPECT_EQ((std::vector<std::u16string>{u"Name", u"Password"}), user.Statics());
        EXPECT_EQ(u"", user.Text(1001));
        EXPECT_EQ(u"Save password", user.Text(1017));
        EXPECT_TRUE(user.MenuBar().empty());
    });
}

TEST_F(Users, DoesNotSeeWhatIsHiddenOrNotThere) {
    InDialog(0, [](DialogUser& user) {
        EXPECT_EQ(u"", user.Text(1022));
        EXPECT_EQ("control 1022 is hidden", Complaint());
        EXPECT_FALSE(user.IsChecked(4711));
        EXPECT_EQ("there is no control 4711", Complaint());
    });
}

TEST_F(Users, TypesInPlaceOfWhatIsThere) {
    InDialog(0, [](DialogUser& user) {
        user.Type(1001, u"first");
        user.Type(1001, u"second");
        EXPECT_EQ(u"second", user.Text(1001));
        EXPECT_EQ(1001, user.Focus());
        user.TypeOn(u"!");
        EXPECT_EQ(u"second!", user.Text(1001));
        user.Type(1001, u"");
        EXPECT_EQ(u"", user.Text(1001));
    });
}

TEST_F(Users, TypesOverTheTextThatTabSelected) {
    InDialog(0, [](DialogUser& user) {
        SetDlgItemTextW(user.Window(), 1003, u"old");
        user.PressTab();
        EXPECT_EQ(1003, user.Focus());
        user.TypeOn(u"x");
        EXPECT_EQ(u"*", user.Text(1003));
    });
}

TEST_F(Users, CannotTypeIntoWhatTakesNoTyping) {
    InDialog(0, [](DialogUser& user) {
        user.Type(1023, u"text");
        EXPECT_EQ("control 1023 is disabled", Complaint());
        user.Type(1024, u"text");
        EXPECT_EQ("control 1024 is read-only", Complaint());
        user.Type(1017, u"text");
        EXPECT_EQ("control 1017 is of another kind", Complaint());
        user.Type(1022, u"text");
        EXPECT_EQ("control 1022 is of another kind", Complaint());
        user.Tap(1022);
        EXPECT_EQ("control 1022 is hidden", Complaint());
        user.Tap(1020);
        user.TypeOn(u"text");
        EXPECT_EQ("nothing that can be typed into has the focus", Complaint());
    });
}

TEST_F(Users, TicksOnlyWhatIsNotTicked) {
    InDialog(0, [&](DialogUser& user) {
        user.Check(1017);
        EXPECT_TRUE(user.IsChecked(1017));
        user.Check(1017);
        EXPECT_TRUE(user.IsChecked(1017));
        user.Check(1017, false);
        EXPECT_FALSE(user.IsChecked(1017));
        EXPECT_EQ((Lines{"1001:512", "1017:0", "1017:0"}), dialog.commands);
        user.Check(1020);
        EXPECT_EQ("control 1020 is of another kind", Complaint());
    });
}

TEST_F(Users, EnterPressesTheFocusedButtonOrTheDefaultOne) {
    InDialog(0, [&](DialogUser& user) {
        user.PressEnter();
        EXPECT_EQ("1021:0", dialog.commands.back());
        user.Tap(1020);
        dialog.commands.clear();
        user.PressEnter();
        EXPECT_EQ(Lines{"1020:0"}, dialog.commands);
    });
}

TEST_F(Users, EnterIsOkWhereNoButtonIs) {
    User([](DialogUser& user) { user.PressEnter(); });
    EXPECT_EQ(IDOK, dialog.Run(101));
    EXPECT_EQ(nullptr, dialog.commandWindow);
}

TEST_F(Users, TabGoesRoundTheTabStops) {
    InDialog(0, [](DialogUser& user) {
        std::vector<int> forwards;
        for (int i = 0; i < 6; ++i) {
            user.PressTab();
            forwards.push_back(user.Focus().value_or(0));
        }
        EXPECT_EQ((std::vector<int>{1003, 1017, 1020, 1021, 1024, 1001}), forwards);
        user.PressTab(true);
        EXPECT_EQ(1024, user.Focus());
        user.PressTab(true);
        EXPECT_EQ(1021, user.Focus());
    });
}

TEST_F(Users, TapOnALabelReachesTheDialogBelow) {
    LPARAM place = 0;
    int taps = 0;
    for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}, UINT{WM_LBUTTONUP}}) {
        dialog.On(message, [&](HWND, WPARAM, LPARAM lParam) {
            place = lParam;
            ++taps;
            return TRUE;
        });
    }
    InDialog(0, [&](DialogUser& user) {
        user.Tap(0xFFFF);
        EXPECT_EQ(MAKELPARAM(3 + 30, 6 + 6), place);
        EXPECT_EQ(2, taps);
        user.DoubleTap(0xFFFF);
        EXPECT_EQ(6, taps);
        user.TapAt(7, 8);
        EXPECT_EQ(MAKELPARAM(7, 8), place);
    });
}

TEST_F(Users, SystemsMessagesAreDelivered) {
    WPARAM timer = 0;
    UINT code = 0;
    dialog.On(WM_TIMER, [&](HWND, WPARAM wParam, LPARAM) {
        timer = wParam;
        return TRUE;
    });
    dialog.On(WM_NOTIFY, [&](HWND window, WPARAM wParam, LPARAM lParam) {
        const auto* const header = reinterpret_cast<const NMHDR*>(lParam);
        EXPECT_EQ(GetDlgItem(window, 1017), header->hwndFrom);
        EXPECT_EQ(1017u, header->idFrom);
        EXPECT_EQ(1017u, wParam);
        code = header->code;
        return TRUE;
    });
    InDialog(0, [&](DialogUser& user) {
        user.Timer(5);
        user.Notify(1017, 42);
        EXPECT_EQ(5u, timer);
        EXPECT_EQ(42u, code);
    });
}

TEST_F(Users, CannotActInADialogThatIsClosed) {
    InDialog(115, [](DialogUser& user) {
        user.PressButton(IDOK);
        user.PressButton(IDOK);
        EXPECT_EQ("the dialog is closed", Complaint());
        user.Type(1001, u"text");
        EXPECT_EQ("the dialog is closed", Complaint());
        user.PressBack();
        EXPECT_EQ("the dialog is closed", Complaint());
        EXPECT_EQ(u"", user.Caption());
        EXPECT_EQ("the dialog is closed", Complaint());
    });
    EXPECT_EQ(IDOK, result);
}

TEST_F(Users, CannotActInADialogThatWaitsForAnother) {
    SampleDialog inner;
    dialog.On(WM_APP, [&](HWND window, WPARAM, LPARAM) {
        inner.Run(102, window);
        return TRUE;
    });
    InDialog(115, [&](DialogUser& user) {
        User([&](DialogUser& innerUser) {
            user.PressButton(IDOK);
            EXPECT_EQ("the dialog waits for another one", Complaint());
            EXPECT_EQ(u"All kinds", user.Caption()) << "it can still be seen";
            Cancel(innerUser);
        });
        user.Send(WM_APP, 0, 0);
    });
}

TEST_F(Users, PostedMessagesAreDeliveredWithTheAction) {
    dialog.On(WM_APP, [&](HWND window, WPARAM, LPARAM) {
        PostMessageW(window, WM_COMMAND, 4711, 0);
        return TRUE;
    });
    InDialog(0, [&](DialogUser& user) {
        user.Send(WM_APP, 0, 0);
        EXPECT_EQ(Lines{"4711:0"}, dialog.commands);
    });
}

TEST_F(Users, MessageBoxOfADialogKnowsItsOwner) {
    dialog.On(WM_APP,
              [&](HWND window, WPARAM, LPARAM) { return MessageBoxW(window, u"Text", u"Caption", MB_OK); });
    InDialog(0, [&](DialogUser& user) {
        device.AnswerMessageBox(IDOK);
        user.Send(WM_APP, 0, 0);
        EXPECT_EQ(user.Window(), device.MessageBoxes().at(0).owner);
    });
    EXPECT_EQ("dialog 1", device.MessageBoxes().at(0).ownerName);
    EXPECT_EQ(Lines{R"(MessageBoxW(dialog 1, "Text", "Caption", 0x00000000) = 1)"},
              device.Calls({"MessageBoxW"}));
    EXPECT_EQ(0, MessageBoxW(device.MessageBoxes()[0].owner, u"", u"", MB_OK));
    EXPECT_EQ(1u, TakeViolations().size()) << "the owner is gone";
}
