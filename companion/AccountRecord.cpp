#include "AccountRecord.h"

#include <algorithm>
#include <iterator>

#include "account/SecretText.h"

static_assert(sizeof(LMChar) == sizeof(WCHAR), "one code unit");

namespace {

using TextField = LMChar[LM_ACCOUNT_TEXT];

bool IsTerminated(const TextField& field) {
    return std::find(std::begin(field), std::end(field), 0) != std::end(field);
}

WideStringView TextIn(const TextField& field) {
    return field;
}

bool Fits(const WideString& text) {
    return text.size() < LM_ACCOUNT_TEXT;
}

/* Up to the first NUL, which a settings file may hold in the middle of a text. */
void Put(const WideString& text, TextField& field) {
    SecureZeroMemory(field, sizeof field);
    std::copy_n(text.begin(), WideString::traits_type::length(text.c_str()), field);
}

}  // namespace

SecretAccount::~SecretAccount() {
    WipeText(password);
}

bool IsAccountRecord(const LMAccountRecord* record) {
    return record != nullptr && record->size == LMInt32{sizeof *record} && IsTerminated(record->userId) &&
           IsTerminated(record->password) && IsTerminated(record->productName);
}

void ReadAccountRecord(const LMAccountRecord& record, Account& account) {
    account.userId = TextIn(record.userId);
    account.password = TextIn(record.password);
    account.savePassword = record.savePassword != 0;
    account.productCode = record.productCode;
    account.productName = TextIn(record.productName);
}

bool IsInRecord(const Account& account, const LMAccountRecord& record) {
    return account.userId == TextIn(record.userId) && account.password == TextIn(record.password) &&
           account.savePassword == (record.savePassword != 0);
}

bool WriteAccountRecord(const Account& account, LMAccountRecord& record) {
    if (!Fits(account.userId) || !Fits(account.password)) return false;
    Put(account.userId, record.userId);
    Put(account.password, record.password);
    record.savePassword = account.savePassword ? 1 : 0;
    return true;
}
