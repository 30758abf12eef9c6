#include "account/SignInExchange.h"

#include "account/AccountProgram.h"
#include "base/Contained.h"
#include "base/Trace.h"
#include "transport/CgiRequest.h"
#include "transport/OnlineConfiguration.h"
#include "transport/Protocol.h"

bool HasCredentials(const Account& account) {
    return !account.userId.empty() && !account.password.empty();
}

SignInAnswer AskToSignIn(const Account& account) noexcept {
    CgiRequest request(serviceHost, accountProgram, true, false);
    SignInAnswer answer;
    const auto exchange = [&] {
        request.WriteInt32(signInCode);
        request.WriteString(account.userId);
        request.WriteString(account.password);
        request.WriteInt32(account.productCode);
        if (request.SendRequest() && request.ReadInt32(answer.status) && answer.status == 0)
            request.ReadInt32(answer.state);
    };
    answer.cause = RunContained(exchange) ? request.GetCause(answer.status)
                                          : request.NoteFailure(ERROR_NOT_ENOUGH_MEMORY);
    if constexpr (isTraced) Trace(TEXT("sign in"), nullptr, answer.status, answer.cause);
    return answer;
}
