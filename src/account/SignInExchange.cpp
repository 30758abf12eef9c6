#include "account/SignInExchange.h"

#include "account/AccountProgram.h"
#include "base/Trace.h"
#include "transport/CgiRequest.h"
#include "transport/OnlineConfiguration.h"
#include "transport/Protocol.h"

bool HasCredentials(const Account& account) {
    return !account.userId.empty() && !account.password.empty();
}

SignInAnswer AskToSignIn(const Account& account) {
    CgiRequest request(serviceHost, accountProgram, true, false);
    request.WriteInt32(signInCode);
    request.WriteString(account.userId);
    request.WriteString(account.password);
    request.WriteInt32(account.productCode);
    SignInAnswer answer;
    if (request.SendRequest() && request.ReadInt32(answer.status) && answer.status == 0)
        request.ReadInt32(answer.state);
    answer.cause = request.GetCause(answer.status);
    if constexpr (isTraced) Trace(TEXT("sign in"), nullptr, answer.status, answer.cause);
    return answer;
}
