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

extern LMInt32 Enter(void* window, LMChar* text);
LMInt32 Enter(void* window, LMChar* text) {
    LMAccountRecord record = {sizeof(LMAccountRecord), 1, 0, {0}, {0}, {0}};
    LMInt32 done = LMAccountLoad(&record) + LMAccountSignIn(&record);
    done += LMAccountShowSignIn(&record, window) + LMAccountShowCreate(&record, window);
    text[0] = record.userId[LM_ACCOUNT_TEXT - 1];
    text[1] = record.password[LM_ACCOUNT_TEXT - 1];
    text[2] = record.productName[LM_ACCOUNT_TEXT - 1];
    return done + LMAccountSave(&record) + record.size + record.productCode + record.savePassword;
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
