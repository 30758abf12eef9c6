/* What is left of a password in memory. */
#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "AccountRecord.h"

namespace {

/* Whether the units "ec" of "secret1" still lie in the memory of an account that has ended, which `use` was
 * given. */
template <class Use>
bool HoldsSecretAfter(Use use) {
    alignas(SecretAccount) unsigned char memory[sizeof(SecretAccount)] = {};
    auto* const account = new (memory) SecretAccount;
    use(*account);
    account->~SecretAccount();
    const unsigned char secret[] = {'e', 0, 'c', 0};
    return std::search(std::begin(memory), std::end(memory), std::begin(secret), std::end(secret)) !=
           std::end(memory);
}

}  // namespace

TEST(SecretAccount, WipesItsPassword) {
    // As short as text is that lies in the account itself and not on the heap.
    EXPECT_TRUE(HoldsSecretAfter([](Account& account) { account.userId = TEXT("secret1"); }))
        << "what is looked for below";
    EXPECT_FALSE(HoldsSecretAfter([](Account& account) { account.password = TEXT("secret1"); }));
}

TEST(SecretAccount, WipesAPasswordThatWasEmptied) {
    EXPECT_FALSE(HoldsSecretAfter([](Account& account) {
        account.password = TEXT("secret1");
        account.password.clear();
    }));
}
