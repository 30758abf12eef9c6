/* The account's dialogs for a user whose language is French. */
#include <gmock/gmock.h>

#include "account/AccountScreenTest.h"
#include "helpers/ClosedPort.h"
#include "helpers/SavedRegistryValue.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"

namespace {

using testing::ElementsAre;
using namespace account_texts;

constexpr char french[] =
    "Sign in to Your Account\tConnexion \xE0 votre compte\n"
    "New Users\tNouveaux utilisateurs\n"
    "Select Menu / New Account\tMenu / Nouveau compte\n"
    "If you already have an account\tSi vous avez d\xE9j\xE0 un compte\n"
    "User ID\tIdentifiant\n"
    "Password\tMot de passe\n"
    "Save password\tRetenir le mot de passe\n"
    "Sign in\tConnexion\n"
    "Menu\tOptions\n"
    "New Account\tNouveau compte\n"
    "Forgot\tOubli\n"
    "Cancel\tAnnuler\n"
    "Create Account\tCr\xE9"
    "er un compte\n"
    "Retype\tEncore\n"
    "Your name\tVotre nom\n"
    "Email\tCourriel\n"
    "Email product update info\tNouvelles par courriel\n"
    "Done\tTermin\xE9\n"
    "You must provide a user name and password to access your account.\tF1\n"
    "The User ID is not correct. If you have lost your ID, click the \\\"I Forgot\\\" button. Do not create "
    "more "
    "than one account.\tF2 \\\"Oubli\\\"\n"
    "The Password is not correct. If you have lost your password, click the \\\"I Forgot\\\" button.\tF3\n"
    "A problem occured communicating with the server\tF4\n"
    "The passwords do not match\tF5\n"
    "Problem communicating over the internet\tF6\n"
    "Internal server error\tF7\n"
    "This user name is already in use.\\nIf this is your account and you have forgotten the User ID or "
    "Password, "
    "click \\\"Cancel\\\" and \\\"I Forgot\\\" to recover them.\tF8\\nbis\n"
    "The password must be at least 6 letters or numbers\tF9\n"
    "An account already exists with the same email address. Please sign in to that account.\\nIf you have "
    "forgotten the User ID or Password, click \\\"Forgot\\\" to recover them.\tF10\n"
    "You must provide a valid email address.\tF11\n"
    "The server returned error code %d\tErreur %d du serveur\n"
    "Orvande Online\tnever shown\n";

constexpr WCHAR frenchSignIn[] = L"Connexion \xE0 votre compte";
constexpr WCHAR frenchCreation[] =
    L"Cr\xE9"
    L"er un compte";

class AccountInFrench : public AccountScreenTest {
protected:
    void SetUp() override {
        AccountScreenTest::SetUp();
        ASSERT_NO_FATAL_FAILURE(UseFrench(french));
    }

    void AnswerStatus(int32_t status) { server.Answer(MapShopReply().Int32(status).bytes); }

    /* The texts of the controls that have no number, from the first. */
    static std::vector<std::wstring> LabelsOf(HWND dialog) {
        std::vector<std::wstring> labels;
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            if ((GetDlgCtrlID(child) & 0xFFFF) == 0xFFFF) labels.push_back(TextOf(child));
        }
        return labels;
    }

    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

}  // namespace

TEST_F(AccountInFrench, SignInDialogIsAllInFrench) {
    EXPECT_FALSE(SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(frenchSignIn);
        EXPECT_THAT(LabelsOf(dialog),
                    ElementsAre(L"Nouveaux utilisateurs", L"Menu / Nouveau compte",
                                L"Si vous avez d\xE9j\xE0 un compte", L"Identifiant", L"Mot de passe"));
        EXPECT_EQ(L"Retenir le mot de passe", TextOf(dialog, SAVE_PASSWORD_BOX));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Connexion", L"Options"));
        PressButton(MenuBarOf(dialog), 1);
        EXPECT_THAT(ItemTextsOf(user.WaitForMenu()), ElementsAre(L"Nouveau compte", L"Oubli", L"Annuler"));
        PressKey(dialog, VK_UP);
        PressKey(dialog, VK_RETURN);
    }));
}

TEST_F(AccountInFrench, CreationDialogIsAllInFrench) {
    EXPECT_FALSE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(frenchCreation);
        EXPECT_THAT(LabelsOf(dialog),
                    ElementsAre(L"Identifiant", L"Mot de passe", L"Encore", L"Votre nom", L"Courriel"));
        EXPECT_EQ(L"Nouvelles par courriel", TextOf(dialog, WANTS_UPDATES_BOX));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)), ElementsAre(L"Termin\xE9", L"Annuler"));
        PressCancel(dialog);
    }));
}

TEST_F(AccountInFrench, EveryMessageOfSigningInIsFrench) {
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(frenchSignIn);
        PressSignIn(dialog);
        ExpectMessage(user, dialog, L"F1", IDI_INFORMATION);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        for (const auto& [status, text] : {std::pair(4, L"F2 \"Oubli\""), {5, L"F3"}, {6, L"F4"}}) {
            AnswerStatus(status);
            PressSignIn(dialog);
            ExpectMessage(user, dialog, text, nullptr);
        }
        ChooseCancel(user, dialog);
    }));
}

TEST_F(AccountInFrench, EveryMessageOfCreatingIsFrench) {
    EXPECT_FALSE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(frenchCreation);
        Type(dialog, PASSWORD_FIELD, L"Secret-1");
        PressDone(dialog);
        ExpectMessage(user, dialog, L"F5", IDI_HAND);
        Type(dialog, RETYPE_FIELD, L"Secret-1");
        for (const auto& [code, text] :
             {std::pair(2, L"F8\nbis"), {3, L"F9"}, {14, L"F11"}, {-7, L"Erreur -7 du serveur"}}) {
            AnswerStatus(code);
            PressDone(dialog);
            ExpectMessage(user, dialog, text, IDI_HAND);
        }
        server.Answer("");
        PressDone(dialog);
        ExpectMessage(user, dialog, L"F7", IDI_HAND);
        AnswerStatus(13);
        PressDone(dialog);
        EXPECT_EQ(L"F10", user.TakeMessage(title).text);
    }));
}

TEST_F(AccountInFrench, FailedTransferIsToldInFrench) {
    const ClosedPort closed;
    SavedRegistryValue nobody(HKEY_CURRENT_USER,
                              L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings",
                              L"ProxyServer", L"127.0.0.1:" + std::to_wstring(closed.Number()));
    EXPECT_FALSE(Create([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(frenchCreation);
        PressDone(dialog);
        ExpectMessage(user, dialog, L"F6", IDI_HAND);
        PressCancel(dialog);
    }));
}

TEST_F(AccountInFrench, NewAccountSaysFrenchToTheService) {
    AnswerStatus(0);
    EXPECT_TRUE(Create([](const ScreenUser& user) { PressDone(user.WaitForDialog(frenchCreation)); }));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_THAT(requests[0].body, testing::EndsWith(MapShopReply().Text(L"French").bytes));
}
