#include "LMAccount.h"

#include "AccountRecord.h"
#include "account/AccountSettings.h"
#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "account/SignInExchange.h"
#include "base/Contained.h"
#include "base/LastError.h"

namespace {

/* What a function returns, and the last error that it leaves. */
struct Outcome {
    LMInt32 result;
    DWORD error;
};

constexpr Outcome succeeded{1, 0};

constexpr Outcome FailedWith(DWORD error) {
    return {0, error};
}

/* The outcome when the system has just said why. */
Outcome Failed() {
    return FailedWith(ErrorOfFailedCall());
}

/* Runs the operation for a record that is as it should be. */
template <class Operation>
LMInt32 RunFor(const LMAccountRecord* record, Operation operation) noexcept {
    const Outcome outcome = Contained(FailedWith(ERROR_NOT_ENOUGH_MEMORY), [&] {
        return IsAccountRecord(record) ? operation() : FailedWith(LM_ERROR_BAD_ARGUMENT);
    });
    return LeaveError(outcome.error, outcome.result);
}

Outcome LoadInto(LMAccountRecord& record) {
    SecretAccount account;
    if (!LoadAccountSettings(account)) return Failed();
    account.savePassword = !account.password.empty();
    return WriteAccountRecord(account, record) ? succeeded : FailedWith(ERROR_MORE_DATA);
}

Outcome SaveFrom(const LMAccountRecord& record) {
    SecretAccount account;
    ReadAccountRecord(record, account);
    return SaveAccountSettings(account) ? succeeded : Failed();
}

DWORD ErrorOf(const SignInAnswer& answer) {
    if (answer.cause != ERROR_SUCCESS) return answer.cause;
    return LM_ERROR_ACCOUNT_STATE | LM_ERROR_STATUS(static_cast<DWORD>(answer.state));
}

Outcome SignInFrom(const LMAccountRecord& record) {
    SecretAccount account;
    ReadAccountRecord(record, account);
    if (!HasCredentials(account)) return FailedWith(LM_ERROR_BAD_ARGUMENT);
    const SignInAnswer answer = AskToSignIn(account);
    return answer.IsAccepted() ? succeeded : FailedWith(ErrorOf(answer));
}

/* Shows a dialog of that class for the record. */
template <class AccountDialog>
Outcome ShowFor(LMAccountRecord& record, void* owner) {
    // For a window that is none, systems differ in what a dialog gives.
    if (owner != nullptr && !IsWindow(static_cast<HWND>(owner))) return FailedWith(LM_ERROR_BAD_ARGUMENT);
    SecretAccount account;
    ReadAccountRecord(record, account);
    account.fieldLimit = LM_ACCOUNT_TEXT - 1;
    AccountDialog dialog(account);
    const int ending = dialog.DoModal(static_cast<HWND>(owner));
    const bool isSignedIn = ending == IDOK;
    // One that was destroyed without a failure was given up.
    if (!isSignedIn && ending != IDCANCEL && dialog.failure.cause != ERROR_SUCCESS)
        return FailedWith(dialog.failure.cause);
    if (!isSignedIn && IsInRecord(account, record)) return FailedWith(LM_ERROR_CANCELLED);
    if (!WriteAccountRecord(account, record)) return FailedWith(ERROR_MORE_DATA);
    return isSignedIn ? Outcome{1, account.savingError} : FailedWith(LM_ERROR_CANCELLED);
}

}  // namespace

LMInt32 LM_CALL LMAccountLoad(LMAccountRecord* record) {
    return RunFor(record, [&] { return LoadInto(*record); });
}

LMInt32 LM_CALL LMAccountSave(const LMAccountRecord* record) {
    return RunFor(record, [&] { return SaveFrom(*record); });
}

LMInt32 LM_CALL LMAccountSignIn(const LMAccountRecord* record) {
    return RunFor(record, [&] { return SignInFrom(*record); });
}

LMInt32 LM_CALL LMAccountShowSignIn(LMAccountRecord* record, void* owner) {
    return RunFor(record, [&] { return ShowFor<SignInDialog>(*record, owner); });
}

LMInt32 LM_CALL LMAccountShowCreate(LMAccountRecord* record, void* owner) {
    return RunFor(record, [&] { return ShowFor<CreateAccountDialog>(*record, owner); });
}
