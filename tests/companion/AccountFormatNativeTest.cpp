/* The message with a number in it, whatever the language file makes of the number. */
#include "companion/CompanionTest.h"
#include "support/FormatTranslations.h"

namespace {

class AccountFormat : public CompanionTest {
protected:
    void SetUp() override {
        CompanionTest::SetUp();
        SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                         BytesOf(TEXT("French")));
        Answer(MapShopReply().Int32(formatCode));
    }

    void UseTranslation(std::string_view translation) {
        device.PutFile(u"\\Program Files\\App\\OrvandeAccount.French.txt",
                       std::string(formatText).append("\t").append(translation).append("\r\n"));
        Restart();
    }

    /* What the box says to a user who creates an account. */
    std::u16string ShownMessage() {
        device.UseDialog([this](DialogUser& user) {
            device.AnswerMessageBox(IDOK);
            user.PressButton(u"Done");
            EXPECT_TRUE(user.IsOpen());
            user.PressButton(u"Cancel");
        });
        LMAccountRecord record = Record();
        ExpectFailure(cancelled, LMAccountShowCreate(&record, nullptr));
        return device.MessageBoxes().empty() ? u"no box" : device.MessageBoxes().back().text;
    }
};

}  // namespace

TEST_F(AccountFormat, IsFilledInOrShownInEnglish) {
    size_t boxes = 0;
    for (const auto& [translation, shown] : formatTranslations) {
        UseTranslation(translation);
        EXPECT_EQ(std::u16string(shown, shown + strlen(shown)), ShownMessage()) << translation;
        EXPECT_EQ(++boxes, device.MessageBoxes().size());
    }
}

TEST_F(AccountFormat, IsCutAt999Units) {
    UseTranslation(std::string(5000, 'x') + "%d");
    EXPECT_EQ(std::u16string(999, u'x'), ShownMessage());
    UseTranslation(std::string(995, 'x') + "%d");
    EXPECT_EQ(std::u16string(995, u'x') + u"1094", ShownMessage());
}
