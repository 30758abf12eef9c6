/* A program that links the library into itself: it signs its user in to the online account, with the
 * library's own dialogs, and prints who that is. */
#include "Platform.h"

#include <cstdio>
#include <string>

#include "account/AccountSettings.h"
#include "account/SignInDialog.h"
#include "frame/LibraryEntry.h"

namespace {

constexpr int exitSignedIn = 0;
constexpr int exitNotSignedIn = 1;

/* What a mapping application would say of itself. */
Account AccountOfThisProgram() {
    Account account;
    account.productCode = 1;
    account.productName = TEXT("Orvande Sign-in Example");
    return account;
}

std::string Utf8Of(const WideString& text) {
    const int units = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPWSTR /*commandLine*/, int /*show*/) {
    AttachLibrary(instance, DLL_PROCESS_ATTACH, nullptr);
    Account account = AccountOfThisProgram();
    LoadAccountSettings(account);
    if (!RunSignInDialog(account, nullptr)) {
        std::puts("Nobody is signed in.");
        return exitNotSignedIn;
    }
    std::puts(("Signed in as " + Utf8Of(account.userId)).c_str());
    return exitSignedIn;
}
