/* A test of the account on the simulated handheld, with a service whose answers are scripted. */
#pragma once

#include "support/ScreenTest.h"

#include "account/Account.h"
#include "support/MapShopReply.h"

class AccountTest : public ScreenTest {
protected:
    static constexpr const char16_t* host = u"online.orvande.example";
    static constexpr const char16_t* settingsFile = u"\\Application Data\\Orvande\\settings.ini";

    void SetUp() override {
        ScreenTest::SetUp();
        account.productCode = 0x01020304;
        account.productName = TEXT("Navigator");
    }

    void Answer(WebReply reply) { device.AddHost(host, 80, std::move(reply)); }
    void Answer(const MapShopReply& reply) { Answer(WebReply::WithBody(reply.bytes)); }

    /* The sign-in is accepted, or the account is created. */
    void Accept() { Answer(MapShopReply().Int32(0).Int32(0)); }

    [[nodiscard]] std::string SettingsFile() const {
        return device.TakeFile(settingsFile).value_or("no file");
    }

    void ExpectBox(std::u16string_view text, UINT flags) {
        ASSERT_FALSE(device.MessageBoxes().empty());
        const ShownMessageBox& box = device.MessageBoxes().back();
        EXPECT_EQ(text, box.text);
        EXPECT_EQ(u"Title", box.caption);
        EXPECT_EQ(flags, box.flags);
    }

    Account account;
};

/* What a service may answer that is no good: its bytes end somewhere, or it does not answer. */
struct BadReply {
    const char* name;
    WebReply reply;
};
