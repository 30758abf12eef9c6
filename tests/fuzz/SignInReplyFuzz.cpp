/* Replies to a sign-in. FuzzedReply.h tells what an input is. */
#include "FuzzedDevice.h"
#include "FuzzedReply.h"
#include "account/SignIn.h"
#include "account/SignInExchange.h"

namespace {

std::u16string_view BoxOf(int32_t status) {
    if (status == 4)
        return u"The User ID is not correct. If you have lost your ID, click the \"I Forgot\" button. Do not "
               u"create more than one account.";
    if (status == 5)
        return u"The Password is not correct. If you have lost your password, click the \"I Forgot\" button.";
    return u"A problem occured communicating with the server";
}

class SignInReply final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        const FuzzedReply fuzzed(input);
        ReplyReading reading(fuzzed.Arriving());
        SignInAnswer expected;
        expected.status = reading.Int32(-1);
        if (expected.status == 0) expected.state = reading.Int32(-1);
        expected.cause = fuzzed.CauseOf(reading, expected.status);
        handheld.BeginRun();
        fuzzed.GiveOn(handheld.device);
        RequireAnswer(expected);
        RequireBox(expected);
        handheld.EndRun();
    }

private:
    void RequireAnswer(const SignInAnswer& expected) const {
        const SignInAnswer answer = AskToSignIn(account);
        Require(answer.status == expected.status, "the status is what the service has answered");
        Require(answer.state == expected.state, "the state is what the service has answered");
        Require(answer.cause == expected.cause, "the cause tells why it has not signed in");
    }

    void RequireBox(const SignInAnswer& expected) const {
        const bool isAccepted = expected.status == 0 && expected.state == 0;
        if (!isAccepted) handheld.device.AnswerMessageBox(IDOK);
        Require(SignIn(account, nullptr) == isAccepted, "only two zeros are a sign-in");
        Require(handheld.device.MessageBoxes().size() == (isAccepted ? 0U : 1U), "the user is told once");
        if (!isAccepted)
            Require(handheld.device.MessageBoxes()[0].text == BoxOf(expected.status), "the user is told why");
    }

    FuzzedDevice handheld;
    Account account{TEXT("Anna"), TEXT("secret1"), false, 0x01020304, TEXT("Navigator")};
};

const bool isAdded = AddFuzzTarget<SignInReply>("SignInReply");

}  // namespace
