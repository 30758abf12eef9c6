/* Uses every name of the header, as C and as C++ of any age. Never run. */
#include "LMAccount.h"

struct Library {
    LMAccountLoadFunction load;
    LMAccountSaveFunction save;
    LMAccountSignInFunction signIn;
    LMAccountShowSignInFunction showSignIn;
    LMAccountShowCreateFunction showCreate;
};

extern const struct Library linked;
const struct Library linked = {LMAccountLoad, LMAccountSave, LMAccountSignIn, LMAccountShowSignIn,
                               LMAccountShowCreate};

extern LMInt32 SignIn(void* window, LMChar* units);
LMInt32 SignIn(void* window, LMChar* units) {
    LMAccountRecord account = {sizeof account, 1, 0, {0}, {0}, {'O', 'r', 0}};
    LMInt32 done = LMAccountLoad(&account);
    if (LMAccountSignIn(&account) || LMAccountShowSignIn(&account, window)) return 1;
    account.size = sizeof(LMAccountRecord);
    account.productCode = account.savePassword + 1;
    units[0] = account.userId[LM_ACCOUNT_TEXT - 1];
    units[1] = account.password[255];
    units[2] = account.productName[255];
    done += LMAccountShowCreate(&account, NULL);
    return done + LMAccountSave(&account);
}

extern int Explain(unsigned long error);
int Explain(unsigned long error) {
    switch (error) {
        case LM_ERROR_UNKNOWN_USER:
            return 1;
        case LM_ERROR_WRONG_PASSWORD:
            return 2;
        default:
            return LM_ERROR_KIND(error) == LM_ERROR_ACCOUNT_STATE ? 3 : 4;
    }
}
