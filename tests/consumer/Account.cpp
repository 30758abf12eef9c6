#include "Account.h"

#include <account/AccountSettings.h>
#include <frame/LibraryEntry.h>

Account AccountOfApplication(HINSTANCE instance) {
    AttachLibrary(instance, DLL_PROCESS_ATTACH, nullptr);
    Account account;
    account.productCode = 1;
    account.productName = TEXT("Consumer");
    LoadAccountSettings(account);
    return account;
}
