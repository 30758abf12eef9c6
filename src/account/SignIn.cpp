#include "account/SignIn.h"

#include "account/SignInExchange.h"
#include "base/Contained.h"
#include "ui/MessageBoxes.h"

namespace {

constexpr const WCHAR* problem = TEXT("A problem occured communicating with the server");

bool Refuse(HWND owner, UINT flags, const WCHAR* text) {
    ShowTranslatedMessage(owner, flags, text);
    return false;
}

bool Check(const Account& account, HWND owner) {
    if (!HasCredentials(account))
        return Refuse(owner, MB_ICONINFORMATION,
                      TEXT("You must provide a user name and password to access your account."));
    const SignInAnswer answer = AskToSignIn(account);
    if (answer.IsAccepted()) return true;
    switch (answer.status) {
        case unknownUserStatus:
            return Refuse(owner, 0,
                          TEXT("The User ID is not correct. If you have lost your ID, click the \"I Forgot\" "
                               "button. Do not create more than one account."));
        case wrongPasswordStatus:
            return Refuse(owner, 0,
                          TEXT("The Password is not correct. If you have lost your password, click the "
                               "\"I Forgot\" button."));
        default:
            return Refuse(owner, 0, problem);
    }
}

}  // namespace

bool SignIn(const Account& account, HWND owner) noexcept {
    bool isAccepted = false;
    if (RunContained([&] { isAccepted = Check(account, owner); })) return isAccepted;
    return Contained(false, [&] { return Refuse(owner, 0, problem); });
}
