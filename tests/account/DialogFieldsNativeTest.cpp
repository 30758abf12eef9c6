#include "account/CreateAccountScreen.h"
#include "account/SignInScreen.h"

namespace {

constexpr std::u16string_view longText = u"abcdefghijklmnopqrstuvwxyz";

/* What the dialogs have sent to their fields and boxes, but for questions about texts. */
std::vector<std::string> ItemMessages() {
    std::vector<std::string> calls = Device::Current().Calls({"SendDlgItemMessageW"});
    std::erase_if(calls,
                  [](const std::string& call) { return call.find("WM_GETTEXTLENGTH") != std::string::npos; });
    return calls;
}

}  // namespace

TEST_F(SignInScreen, FieldsTakeAsManyUnitsAsTheApplicationSays) {
    for (const int limit : {1, 8}) {
        account = {};
        account.fieldLimit = limit;
        EXPECT_FALSE(Run([&](DialogUser& user) {
            for (const int field : {USER_ID_FIELD, PASSWORD_FIELD}) {
                user.Type(field, longText);
                EXPECT_EQ(static_cast<size_t>(limit), user.Text(field).size());
            }
            Leave(user);
        }));
    }
}

TEST_F(CreateAccountScreen, FieldsTakeAsManyUnitsAsTheApplicationSays) {
    for (const int limit : {1, 8}) {
        account = {};
        account.fieldLimit = limit;
        EXPECT_FALSE(Run([&](DialogUser& user) {
            for (const int field : {USER_ID_FIELD, PASSWORD_FIELD, RETYPE_FIELD}) {
                user.Type(field, longText);
                EXPECT_EQ(static_cast<size_t>(limit), user.Text(field).size());
            }
            user.PressButton(IDCANCEL);
        }));
    }
}

TEST_F(SignInScreen, FieldsAndBoxGetTheirMessagesWithoutFurtherParameters) {
    account.fieldLimit = 8;
    EXPECT_FALSE(Run([this](DialogUser& user) {
        device.AnswerMessageBox(IDOK);
        user.PressButton(IDOK);
        EXPECT_EQ(
            (std::vector<std::string>{"SendDlgItemMessageW(dialog 1, 1001, EM_LIMITTEXT, 0x8, 0x0) = 0",
                                      "SendDlgItemMessageW(dialog 1, 1003, EM_LIMITTEXT, 0x8, 0x0) = 0",
                                      "SendDlgItemMessageW(dialog 1, 1017, BM_GETCHECK, 0x0, 0x0) = 0"}),
            ItemMessages());
        Leave(user);
    }));
}

TEST_F(CreateAccountScreen, FieldsAndBoxGetTheirMessagesWithoutFurtherParameters) {
    account.fieldLimit = 8;
    Answer(MapShopReply().Int32(0));
    EXPECT_TRUE(Run([](DialogUser& user) { user.PressButton(IDOK); }));
    EXPECT_EQ((std::vector<std::string>{"SendDlgItemMessageW(dialog 1, 1001, EM_LIMITTEXT, 0x8, 0x0) = 0",
                                        "SendDlgItemMessageW(dialog 1, 1003, EM_LIMITTEXT, 0x8, 0x0) = 0",
                                        "SendDlgItemMessageW(dialog 1, 1005, EM_LIMITTEXT, 0x8, 0x0) = 0",
                                        "SendDlgItemMessageW(dialog 1, 1012, BM_SETCHECK, 0x1, 0x0) = 0",
                                        "SendDlgItemMessageW(dialog 1, 1012, BM_GETCHECK, 0x0, 0x0) = 1"}),
              ItemMessages());
}

TEST_F(SignInScreen, FieldsWithoutALimitKeepTheSystemsOwn) {
    EXPECT_FALSE(Run(Leave));
    EXPECT_TRUE(ItemMessages().empty());
}

TEST_F(CreateAccountScreen, FieldsWithoutALimitKeepTheSystemsOwn) {
    EXPECT_FALSE(Run(Cancel));
    EXPECT_EQ(1u, ItemMessages().size()) << "to the box alone";
}

TEST_F(CreateAccountScreen, ChoiceAboutUpdatesIsKeptWhenTheDialogIsShownAgain) {
    CreateAccountDialog dialog(account);
    Answer(MapShopReply().Int32(3));
    device.UseDialog([&](DialogUser& user) {
        Fill(user);
        user.Check(WANTS_UPDATES_BOX, false);
        ExpectMessage();
        user.PressButton(IDOK);
        user.PressButton(IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    device.UseDialog([](DialogUser& user) {
        EXPECT_FALSE(user.IsChecked(WANTS_UPDATES_BOX));
        user.PressButton(IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
}
