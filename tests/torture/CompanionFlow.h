/* What flows of the companion share: the application's record, and the file in which accounts are saved. */
#pragma once

#include <cstring>

#include "DeviceFile.h"
#include "Flow.h"
#include "LMAccount.h"
#include "support/MapShopReply.h"

class CompanionFlow : public Flow {
public:
    void SetUp() override {
        device.MakeFolder(u"\\Application Data\\Orvande");
        settings.emplace(u"\\Application Data\\Orvande\\settings.ini");
    }

    void Prepare() override {
        settings->Remove();
        record = {};
        record.size = sizeof record;
        record.productCode = 0x01020304;
        Put(TEXT("Navigator"), record.productName);
        Put(TEXT("before"), record.userId);
        before = record;
    }

protected:
    static void Put(WideStringView text, LMChar* field) { *std::copy(text.begin(), text.end(), field) = 0; }

    void Answer(const MapShopReply& reply) {
        device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(reply.bytes));
    }

    [[nodiscard]] std::string ResultText() const {
        return std::to_string(result) + ", error " +
               (error == LM_ERROR_CANCELLED ? "cancelled" : ErrorText(error));
    }

    /* User ID, password and whether to save it. */
    [[nodiscard]] std::string RecordText() const {
        if (std::memcmp(&record, &before, sizeof record) == 0) return "as it was";
        return Narrow(record.userId) + "/" + Narrow(record.password) + "/" +
               std::to_string(record.savePassword);
    }

    [[nodiscard]] std::string SettingsText() const {
        const std::optional<std::string> bytes = settings->Take();
        if (!bytes) return "none";
        if (*bytes == "UserID=Old\r\n") return "old";
        return *bytes == saved ? "saved" : saved.starts_with(*bytes) ? "cut" : *bytes;
    }

    std::optional<DeviceFile> settings;
    std::string saved; /* what the file holds in the end */
    LMAccountRecord record{};
    LMAccountRecord before{}; /* the same when the run begins */
    LMInt32 result = 0;
    DWORD error = 0;

private:
    static std::string Narrow(WideStringView text) { return {text.begin(), text.end()}; }
};
