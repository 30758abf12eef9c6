#include "account/CreateAccountScreen.h"
#include "account/SignInScreen.h"

namespace {

constexpr std::u16string_view longText = u"abcdefghijklmnopqrstuvwxyz";

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
