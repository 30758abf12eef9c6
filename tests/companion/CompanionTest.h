/* A test of the companion's exports on the simulated handheld. In the native ring they are linked in, in the
 * device ring the image is loaded anew for each test. */
#pragma once

#include "support/DeviceTest.h"

#include "Device.h"
#include "LMAccount.h"
#include "resources/ResourceIds.h"
#include "support/Causes.h"
#include "support/MapShopReply.h"

class CompanionTest : public DeviceTest {
protected:
    static constexpr const char16_t* settingsFile = u"\\Application Data\\Orvande\\settings.ini";
    static constexpr DWORD cancelled = LM_ERROR_CANCELLED;

    void SetUp() override;
    void TearDown() override;

    /* Loads the companion as the application's next start does. */
    void Restart();

    /* A record as an application sets it up. */
    static LMAccountRecord Record(WideStringView userId = {}, WideStringView password = {}) {
        LMAccountRecord record{};
        record.size = sizeof record;
        record.productCode = 0x01020304;
        Put(userId, record.userId);
        Put(password, record.password);
        Put(TEXT("Navigator"), record.productName);
        return record;
    }

    static void Put(WideStringView text, LMChar* field) { *std::copy(text.begin(), text.end(), field) = 0; }

    /* All bytes, those behind the texts, too; the number of zeros in place of many. */
    static std::string Bytes(const LMAccountRecord& record) {
        const std::string bytes(reinterpret_cast<const char*>(&record), sizeof record);
        std::string shown;
        for (size_t begin = 0; begin < bytes.size();) {
            const size_t zeros = std::min(bytes.find_first_not_of('\0', begin), bytes.size()) - begin;
            const size_t count = std::max<size_t>(zeros, 1);
            shown += zeros > 8 ? "{" + std::to_string(zeros) + " zeros}" : bytes.substr(begin, count);
            begin += count;
        }
        return shown;
    }

    void Answer(WebReply reply) { device.AddHost(u"online.orvande.example", 80, std::move(reply)); }
    void Answer(const MapShopReply& reply) { Answer(WebReply::WithBody(reply.bytes)); }
    void Accept() { Answer(MapShopReply().Int32(0).Int32(0)); }

    [[nodiscard]] std::string SettingsFile() const {
        return device.TakeFile(settingsFile).value_or("no file");
    }

    /* Expects a result and the last error that a function has just left. */
    static void Expect(LMInt32 result, DWORD error, LMInt32 given) {
        const DWORD left = GetLastError();
        EXPECT_EQ(result, given);
        EXPECT_EQ(error, left) << std::hex << left;
    }
    static void ExpectSuccess(LMInt32 given) { Expect(1, 0, given); }
    static void ExpectFailure(DWORD error, LMInt32 given) { Expect(0, error, given); }

    Device& device = Device::Current();
};

inline void PrintTo(const std::u16string& text, std::ostream* out) {
    for (const char16_t unit : text)
        *out << (unit < 0x80 ? static_cast<char>(unit) : '?');
}
