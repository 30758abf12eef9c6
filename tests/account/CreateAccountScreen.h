/* The dialog for a new account, and what the user does with it. */
#pragma once

#include "account/CreateAccountDialog.h"

#include "account/AccountTest.h"

class CreateAccountScreen : public AccountTest {
protected:
    bool Run(const DialogScript& script) {
        device.UseDialog(script);
        return CreateAccount(account, nullptr);
    }

    static void Fill(DialogUser& user) {
        user.Type(USER_ID_FIELD, u"Anna");
        user.Type(PASSWORD_FIELD, u"secret1");
        user.Type(RETYPE_FIELD, u"secret1");
        user.Type(NAME_FIELD, u"Anna Berg");
        user.Type(EMAIL_FIELD, u"anna@example.org");
    }

    /* The request for what Fill types. */
    static MapShopReply Request(int updates, int32_t vendor, WideStringView language) {
        MapShopReply request;
        request.Int32(10).Text(TEXT("Anna")).Text(TEXT("secret1")).Text(TEXT("Anna Berg")).Text(TEXT(""));
        request.Text(TEXT("anna@example.org"));
        request.bytes += static_cast<char>(updates);
        return request.Int32(vendor).Text(language);
    }

    /* The service answers this to Done; the box must say so. */
    void ExpectRefusal(WebReply reply, std::u16string_view text, bool staysOpen = true) {
        Answer(std::move(reply));
        EXPECT_FALSE(Run([&](DialogUser& user) {
            Fill(user);
            ExpectMessage();
            user.PressButton(IDOK);
            EXPECT_EQ(staysOpen, user.IsOpen());
            ASSERT_FALSE(device.MessageBoxes().empty());
            EXPECT_EQ(user.Window(), device.MessageBoxes().back().owner);
            ExpectBox(text, MB_ICONHAND);
            if (user.IsOpen()) user.PressButton(IDCANCEL);
        }));
        EXPECT_EQ("no file", SettingsFile());
    }
    void ExpectRefusalOfCode(int32_t code, std::u16string_view text, bool staysOpen = true) {
        ExpectRefusal(WebReply::WithBody(MapShopReply().Int32(code).bytes), text, staysOpen);
    }
};
