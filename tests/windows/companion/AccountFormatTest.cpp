/* The message with a number in it, whatever the language file makes of the number. */
#include "LMAccount.h"
#include "account/AccountScreenTest.h"
#include "helpers/LoadedModule.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"
#include "support/FormatTranslations.h"
#include "support/MapShopReply.h"

namespace {

/* The companion lies in the test's own folder, beside its language file. */
class AccountFormat : public AccountScreenTest {
protected:
    void SetUp() override {
        AccountScreenTest::SetUp();
        const std::wstring shipped = ProgramFolder() + L"\\OrvandeAccount.dll";
        companion = PathOf(L"OrvandeAccount.dll");
        ASSERT_TRUE(CopyFileW(shipped.c_str(), companion.c_str(), TRUE));
        SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                         BytesOf(std::wstring(L"French\0", 7)));
        server.Answer(MapShopReply().Int32(formatCode).bytes);
    }

    void UseTranslation(std::string_view translation) const {
        PutFile(PathOf(L"OrvandeAccount.French.txt"),
                std::string(formatText).append("\t").append(translation).append("\r\n"));
    }

    /* What the box says to a user who creates an account. */
    std::wstring ShownMessage() const {
        const LoadedModule module(companion.c_str());
        const LMAccountShowCreateFunction showCreate = module.Find("LMAccountShowCreate");
        std::wstring shown;
        const ScreenUser user([&](const ScreenUser& acting) {
            const HWND dialog = acting.WaitForDialog(account_texts::creationCaption);
            PressDone(dialog);
            shown = acting.TakeMessage(account_texts::title).text;
            PressCancel(acting.WaitForDialog(account_texts::creationCaption));
        });
        LMAccountRecord record{};
        record.size = sizeof record;
        EXPECT_EQ(0, showCreate(&record, nullptr));
        EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, GetLastError());
        return shown;
    }

    std::wstring companion;
    ScriptedServer server;
    const WebProxy proxy{server.Port()};
};

}  // namespace

TEST_F(AccountFormat, IsFilledInOrShownInEnglish) {
    for (const auto& [translation, shown] : formatTranslations) {
        UseTranslation(translation);
        EXPECT_EQ(Widened(shown), ShownMessage()) << translation;
    }
}

TEST_F(AccountFormat, IsCutAt999Units) {
    UseTranslation(std::string(5000, 'x') + "%d");
    EXPECT_EQ(std::wstring(999, L'x'), ShownMessage());
    UseTranslation(std::string(995, 'x') + "%d");
    EXPECT_EQ(std::wstring(995, L'x') + L"1094", ShownMessage());
}
