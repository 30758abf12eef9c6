#include "account/AccountSettings.h"

#include "account/PackedPassword.h"
#include "base/Contained.h"
#include "frame/Folders.h"
#include "text/FormDictionary.h"

namespace {

constexpr const WCHAR* userIdKey = TEXT("UserID");
constexpr const WCHAR* passwordKey = TEXT("Passwd");

/* Empty, which names no file, when the system has no folder for application data. */
WideString SettingsPath() {
    const WideString folder = GetSpecialFolderPath(CSIDL_APPDATA, TEXT("Orvande"));
    return folder.empty() ? folder : folder + TEXT("\\settings.ini");
}

void Load(Account& account) {
    FormDictionary settings;
    settings.LoadFromFile(SettingsPath());
    account.userId = settings.GetString(userIdKey);
    if (!settings.HasValue(passwordKey)) return;
    PackedPassword packed{};
    const int32_t count =
        settings.GetHexBytes(passwordKey, packed.data(), static_cast<int32_t>(packed.size()));
    account.password = UnpackPassword(packed, static_cast<size_t>(count));
}

void Save(const Account& account) {
    FormDictionary settings;
    settings.SetString(userIdKey, account.userId);
    if (account.savePassword) {
        const PackedPassword packed = PackPassword(account.password);
        settings.SetHexBytes(passwordKey, packed.data(), static_cast<int32_t>(packed.size()));
    }
    settings.SaveToFile(SettingsPath());
}

}  // namespace

void LoadAccountSettings(Account& account) noexcept {
    RunContained([&] { Load(account); });
}

void SaveAccountSettings(const Account& account) noexcept {
    RunContained([&] { Save(account); });
}
