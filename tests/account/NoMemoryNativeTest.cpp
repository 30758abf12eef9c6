#include "account/AccountSettings.h"
#include "account/CreateAccountDialog.h"
#include "account/SignIn.h"
#include "account/SignInDialog.h"

#include "account/AccountTest.h"
#include "account/PackedPassword.h"

/* All memory is gone, also that for telling so. */
class WithoutMemory : public AccountTest {
protected:
    template <class Operation>
    void ExpectNothingToBeDone(Operation operation) {
        AllocationWatch watch(1, Failing::FromThereOn);
        const bool isDone = operation();
        watch.Stop();
        EXPECT_TRUE(watch.Failed());
        EXPECT_FALSE(isDone);
        EXPECT_TRUE(device.MessageBoxes().empty());
    }
};

TEST_F(WithoutMemory, NobodyIsSignedIn) {
    account.userId = TEXT("Anna");
    account.password = TEXT("secret1");
    Accept();
    ExpectNothingToBeDone([&] { return SignIn(account, nullptr); });
}

TEST_F(WithoutMemory, MessageThatCannotBeTranslatedIsAnotherOneOnceThereIsSomeAgain) {
    ExpectMessage();
    AllocationWatch watch(1);
    const bool isDone = SignIn(account, nullptr);
    watch.Stop();
    EXPECT_TRUE(watch.Failed());
    EXPECT_FALSE(isDone);
    ExpectBox(u"A problem occured communicating with the server", 0);
}

TEST_F(WithoutMemory, AccountIsNeitherLoadedNorSaved) {
    device.PutFile(settingsFile, "UserID=Anna\n");
    ExpectNothingToBeDone([&] { return LoadAccountSettings(account); });
    ExpectNothingToBeDone([&] { return SaveAccountSettings(account); });
}

TEST_F(WithoutMemory, DialogToSignInIsNotShown) {
    ExpectNothingToBeDone([&] { return RunSignInDialog(account, nullptr); });
}

TEST_F(WithoutMemory, DialogForANewAccountIsNotShown) {
    ExpectNothingToBeDone([&] { return CreateAccount(account, nullptr); });
}

/* A text that grows leaves parts of the password in the memory that it gives back. */
TEST(UnpackedPassword, LiesInMemoryOnce) {
    const PackedPassword packed = PackPassword(TEXT("abcdefghijklmnop"));
    AllocationWatch watch;
    const WideString password = UnpackPassword(packed, packed.size());
    watch.Stop();
    EXPECT_TRUE(WideString(TEXT("abcdefghijklmnop")) == password);
    EXPECT_EQ(1u, watch.Count());
}
