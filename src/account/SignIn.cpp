#include "account/SignIn.h"

#include "account/AccountProgram.h"
#include "base/Contained.h"
#include "transport/CgiRequest.h"
#include "transport/OnlineConfiguration.h"
#include "transport/Protocol.h"
#include "ui/MessageBoxes.h"

namespace {

enum Answer : int32_t { failed = -1, accepted = 0, unknownUser = 4, wrongPassword = 5 };

int32_t ReadAnswer(ByteStream& reply) {
    int32_t status = failed;
    reply.ReadInt32(status);
    if (status != accepted) return status;
    int32_t state = -1;
    return reply.ReadInt32(state) && state == 0 ? accepted : failed;
}

int32_t AskService(const Account& account) {
    CgiRequest request(serviceHost, accountProgram, true, false);
    request.WriteInt32(signInCode);
    request.WriteString(account.userId);
    request.WriteString(account.password);
    request.WriteInt32(account.productCode);
    return request.SendRequest() ? ReadAnswer(request) : failed;
}

constexpr const WCHAR* problem = TEXT("A problem occured communicating with the server");

bool Refuse(HWND owner, UINT flags, const WCHAR* text) {
    ShowTranslatedMessage(owner, flags, text);
    return false;
}

bool Check(const Account& account, HWND owner) {
    if (account.userId.empty() || account.password.empty())
        return Refuse(owner, MB_ICONINFORMATION,
                      TEXT("You must provide a user name and password to access your account."));
    switch (AskService(account)) {
        case accepted:
            return true;
        case unknownUser:
            return Refuse(owner, 0,
                          TEXT("The User ID is not correct. If you have lost your ID, click the \"I Forgot\" "
                               "button. Do not create more than one account."));
        case wrongPassword:
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
