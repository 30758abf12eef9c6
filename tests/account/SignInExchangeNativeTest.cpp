#include "account/SignInExchange.h"

#include "account/AccountTest.h"

class SignInExchange : public AccountTest {};

TEST_F(SignInExchange, AnswerThatDoesNotComeIsMinusOneWithItsCause) {
    Answer(WebReply::Refused());
    const SignInAnswer answer = AskToSignIn(account);
    EXPECT_EQ(-1, answer.status);
    EXPECT_EQ(-1, answer.state);
    EXPECT_EQ(DWORD{ERROR_INTERNET_CANNOT_CONNECT}, answer.cause);
}

TEST_F(SignInExchange, StateThatDoesNotComeIsMinusOne) {
    Answer(MapShopReply().Int32(5));
    const SignInAnswer answer = AskToSignIn(account);
    EXPECT_EQ(wrongPasswordStatus, answer.status);
    EXPECT_EQ(-1, answer.state);
}

TEST_F(SignInExchange, OnlyStatusAndStateOfZeroAreAccepted) {
    EXPECT_TRUE((SignInAnswer{0, 0, 0}.IsAccepted()));
    EXPECT_FALSE((SignInAnswer{4, 0, 0}.IsAccepted()));
    EXPECT_FALSE((SignInAnswer{0, 1, 0}.IsAccepted()));
    EXPECT_FALSE(SignInAnswer{}.IsAccepted());
    EXPECT_EQ(DWORD{0}, SignInAnswer{}.cause);
}

TEST_F(SignInExchange, AccountHoldsNothingAtFirst) {
    const Account empty;
    EXPECT_FALSE(HasCredentials(empty));
    EXPECT_FALSE(empty.savePassword);
    EXPECT_EQ(0, empty.productCode);
    EXPECT_EQ(0, empty.fieldLimit);
    EXPECT_EQ(DWORD{0}, empty.savingError);
}
