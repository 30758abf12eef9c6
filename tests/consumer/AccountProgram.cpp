/* A program with the library in itself. With an argument it shows the sign-in dialog, from its resources. */
#include "Account.h"

#include <account/SignInDialog.h>
#include <resources/ResourceIds.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPWSTR commandLine, int /*show*/) {
    Account account = AccountOfApplication(instance);
    if (commandLine != nullptr && commandLine[0] != 0) return RunSignInDialog(account, nullptr) ? 0 : 1;
    const bool hasResources =
        FindResourceW(instance, MAKEINTRESOURCEW(SIGN_IN_DIALOG), MAKEINTRESOURCEW(5)) != nullptr;
    return hasResources && account.userId.empty() ? 0 : 1;
}
