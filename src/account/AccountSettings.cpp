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

/* Whether there is a file that can be opened. */
bool Load(Account& account) {
    FormDictionary settings;
    const bool isThere = settings.LoadFromFile(SettingsPath());
    account.userId = settings.GetString(userIdKey);
    if (settings.HasValue(passwordKey)) {
        PackedPassword packed{};
        const int32_t count =
            settings.GetHexBytes(passwordKey, packed.data(), static_cast<int32_t>(packed.size()));
        account.password = UnpackPassword(packed, static_cast<size_t>(count));
    }
    return isThere;
}

bool Save(const Account& account) {
    FormDictionary settings;
    settings.SetString(userIdKey, account.userId);
    if (account.savePassword) {
        const PackedPassword packed = PackPassword(account.password);
        settings.SetHexBytes(passwordKey, packed.data(), static_cast<int32_t>(packed.size()));
    }
    return settings.SaveToFile(SettingsPath());
}

/* The result of `operation`; false, too, when memory runs out. */
template <class Operation>
bool ContainedWithError(Operation operation) noexcept {
    bool result = false;
    if (!RunContained([&] { result = operation(); })) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return result;
}

}  // namespace

bool LoadAccountSettings(Account& account) noexcept {
    return ContainedWithError([&] { return Load(account); });
}

bool SaveAccountSettings(const Account& account) noexcept {
    return ContainedWithError([&] { return Save(account); });
}
