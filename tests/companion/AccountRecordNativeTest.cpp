/* Which records the companion takes. */
#include "companion/CompanionTest.h"

#include <functional>

namespace {

/* Where the manual says that the fields lie. */
static_assert(sizeof(LMAccountRecord) == 1548);
static_assert(offsetof(LMAccountRecord, size) == 0);
static_assert(offsetof(LMAccountRecord, productCode) == 4);
static_assert(offsetof(LMAccountRecord, savePassword) == 8);
static_assert(offsetof(LMAccountRecord, userId) == 12);
static_assert(offsetof(LMAccountRecord, password) == 524);
static_assert(offsetof(LMAccountRecord, productName) == 1036);

struct Function {
    const char* name;
    std::function<LMInt32(LMAccountRecord*)> call;
};

const Function functions[] = {
    {"LMAccountLoad", LMAccountLoad},
    {"LMAccountSave", LMAccountSave},
    {"LMAccountSignIn", LMAccountSignIn},
    {"LMAccountShowSignIn", [](LMAccountRecord* record) { return LMAccountShowSignIn(record, nullptr); }},
    {"LMAccountShowCreate", [](LMAccountRecord* record) { return LMAccountShowCreate(record, nullptr); }},
};

class AccountRecord : public CompanionTest {
protected:
    /* Every function refuses the record, and does nothing. */
    void ExpectRefused(const LMAccountRecord& bad) {
        device.PutFile(settingsFile, "UserID=Old\r\n");
        for (const Function& function : functions) {
            SCOPED_TRACE(function.name);
            LMAccountRecord record = bad;
            ExpectFailure(LM_ERROR_BAD_ARGUMENT, function.call(&record));
            EXPECT_EQ(Bytes(bad), Bytes(record));
        }
        EXPECT_EQ("UserID=Old\r\n", SettingsFile());
        EXPECT_TRUE(device.Requests().empty());
        EXPECT_TRUE(device.Dialogs().empty());
    }
};

}  // namespace

TEST_F(AccountRecord, NullIsRefused) {
    for (const Function& function : functions) {
        SCOPED_TRACE(function.name);
        ExpectFailure(LM_ERROR_BAD_ARGUMENT, function.call(nullptr));
    }
}

TEST_F(AccountRecord, OfAnotherSizeIsRefused) {
    for (const LMInt32 size : {0, 4, 1547, 1549, 3096, -1, -1548, INT32_MIN, INT32_MAX}) {
        SCOPED_TRACE(size);
        LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
        record.size = size;
        ExpectRefused(record);
    }
}

TEST_F(AccountRecord, TextThatFillsItsFieldIsRefused) {
    for (LMChar(LMAccountRecord::*const field)[LM_ACCOUNT_TEXT] :
         {&LMAccountRecord::userId, &LMAccountRecord::password, &LMAccountRecord::productName}) {
        LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
        std::fill(std::begin(record.*field), std::end(record.*field), LMChar{u'x'});
        ExpectRefused(record);
    }
}

TEST_F(AccountRecord, TextThatFillsItsFieldButForTheNulIsTaken) {
    const WideString longest(LM_ACCOUNT_TEXT - 1, u'x');
    LMAccountRecord record = Record(longest, longest);
    Put(longest, record.productName);
    Accept();
    ExpectSuccess(LMAccountSignIn(&record));
    EXPECT_EQ(MapShopReply().Int32(8).Text(longest).Text(longest).Int32(0x01020304).bytes,
              device.Requests().at(0).body);
    ExpectSuccess(LMAccountSave(&record));
    LMAccountRecord loaded = Record();
    ExpectSuccess(LMAccountLoad(&loaded));
    EXPECT_EQ(longest, WideString(loaded.userId));
}

TEST_F(AccountRecord, WhatFollowsTheNulDoesNotMatter) {
    LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
    std::fill(record.password + 8, std::end(record.password), LMChar{u'x'});
    Accept();
    ExpectSuccess(LMAccountSignIn(&record));
    EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("secret1")).Int32(0x01020304).bytes,
              device.Requests().at(0).body);
}

TEST_F(AccountRecord, ProductCodeMayBeAnyNumber) {
    for (const LMInt32 code : {0, -1, INT32_MIN, INT32_MAX}) {
        LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
        record.productCode = code;
        Accept();
        ExpectSuccess(LMAccountSignIn(&record));
        EXPECT_EQ(MapShopReply().Int32(8).Text(TEXT("Anna")).Text(TEXT("secret1")).Int32(code).bytes,
                  device.Requests().back().body);
    }
}

TEST_F(AccountRecord, EverySavePasswordButZeroSavesIt) {
    for (const LMInt32 yes : {1, -1, 256, INT32_MIN}) {
        LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
        record.savePassword = yes;
        ExpectSuccess(LMAccountSave(&record));
        EXPECT_EQ(0u, SettingsFile().find("Passwd="));
    }
}
