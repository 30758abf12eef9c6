/* The account's dialogs in every language of the project: what they show is what the language's file says. */
#include <gmock/gmock.h>

#include "account/AccountScreenTest.h"
#include "base/OwnedFile.h"
#include "helpers/ClosedPort.h"
#include "helpers/ProgramFolder.h"
#include "helpers/SavedRegistryValue.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"
#include "ui/TranslationFile.h"

namespace {

using testing::ElementsAre;
using namespace account_texts;

constexpr std::wstring_view program = L"orvande-account-tests.";
constexpr std::wstring_view ending = L".txt";

/* Those whose files lie beside the program. */
std::vector<std::wstring> Languages() {
    std::vector<std::wstring> languages;
    WIN32_FIND_DATAW found{};
    const HANDLE search =
        FindFirstFileW((ProgramFolder() + L"\\").append(program).append(L"*.txt").c_str(), &found);
    for (BOOL isThere = search != INVALID_HANDLE_VALUE; isThere; isThere = FindNextFileW(search, &found)) {
        const std::wstring_view name = found.cFileName;
        languages.emplace_back(name.substr(program.size(), name.size() - program.size() - ending.size()));
    }
    FindClose(search);
    return languages;
}

class AccountInLanguage : public AccountScreenTest, public testing::WithParamInterface<std::wstring> {
protected:
    void SetUp() override {
        AccountScreenTest::SetUp();
        ASSERT_NO_FATAL_FAILURE(UseLanguage(GetParam()));
        const std::wstring path = (ProgramFolder() + L"\\").append(program).append(GetParam()).append(ending);
        const FileHandle file(_wfopen(path.c_str(), L"rb"));
        ASSERT_TRUE(file);
        ReadTranslations(file.Get(), translations);
    }

    /* What the file says for exactly this text. Throws std::out_of_range when that is nothing. */
    const std::wstring& Translated(const WCHAR* text) const { return translations.at(text); }

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

    TranslationTable translations;
    ScriptedServer server;
    WebProxy proxy{server.Port()};
};

INSTANTIATE_TEST_SUITE_P(Languages, AccountInLanguage, testing::ValuesIn(Languages()),
                         [](const auto& tested) {
                             return std::string(tested.param.begin(), tested.param.end());
                         });

}  // namespace

TEST_P(AccountInLanguage, SignInDialogIsTheFilesFromTheCaptionToTheMenu) {
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(Translated(signInCaption));
        EXPECT_THAT(LabelsOf(dialog),
                    ElementsAre(Translated(L"New Users:"), Translated(L"Select Menu / New Account"),
                                Translated(L"If you already have an account:"), Translated(L"User ID"),
                                Translated(L"Password")));
        EXPECT_EQ(Translated(L"Save password"), TextOf(dialog, SAVE_PASSWORD_BOX));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)),
                    ElementsAre(Translated(L"Sign in"), Translated(L"Menu")));
        PressButton(MenuBarOf(dialog), 1);
        EXPECT_THAT(ItemTextsOf(user.WaitForMenu()),
                    ElementsAre(Translated(L"New Account"), Translated(L"Forgot"), Translated(L"Cancel")));
        PressKey(dialog, VK_UP);
        PressKey(dialog, VK_RETURN);
    }));
}

TEST_P(AccountInLanguage, CreationDialogIsTheFilesFromTheCaptionToTheSoftKeys) {
    EXPECT_FALSE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(Translated(creationCaption));
        EXPECT_THAT(LabelsOf(dialog),
                    ElementsAre(Translated(L"User ID"), Translated(L"Password"), Translated(L"Retype"),
                                Translated(L"Your name"), Translated(L"Email")));
        EXPECT_EQ(Translated(L"Email product update info"), TextOf(dialog, WANTS_UPDATES_BOX));
        EXPECT_THAT(ButtonTextsOf(MenuBarOf(dialog)),
                    ElementsAre(Translated(L"Done"), Translated(L"Cancel")));
        PressCancel(dialog);
    }));
}

TEST_P(AccountInLanguage, EveryMessageOfSigningInIsTheFiles) {
    EXPECT_FALSE(SignInAs([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(Translated(signInCaption));
        PressSignIn(dialog);
        ExpectMessage(user, dialog, Translated(nothingToCheck), IDI_INFORMATION);
        TypeCredentials(dialog, L"Anna", L"Secret-1");
        for (const auto& [status, text] : {std::pair(4, unknownUser), {5, wrongPassword}, {6, problem}}) {
            AnswerStatus(status);
            PressSignIn(dialog);
            ExpectMessage(user, dialog, Translated(text), nullptr);
        }
        ChooseCancel(user, dialog);
    }));
}

TEST_P(AccountInLanguage, EveryMessageOfCreatingIsTheFiles) {
    EXPECT_FALSE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(Translated(creationCaption));
        Type(dialog, PASSWORD_FIELD, L"Secret-1");
        PressDone(dialog);
        ExpectMessage(user, dialog, Translated(mismatch), IDI_HAND);
        Type(dialog, RETYPE_FIELD, L"Secret-1");
        for (const auto& [code, text] : {std::pair(2, nameTaken), {3, shortPassword}, {14, badEmail}}) {
            AnswerStatus(code);
            PressDone(dialog);
            ExpectMessage(user, dialog, Translated(text), IDI_HAND);
        }
        std::wstring withNumber = Translated(L"The server returned error code %d");
        withNumber.replace(withNumber.find(L"%d"), 2, L"-7");
        AnswerStatus(-7);
        PressDone(dialog);
        ExpectMessage(user, dialog, withNumber, IDI_HAND);
        server.Answer("");
        PressDone(dialog);
        ExpectMessage(user, dialog, Translated(unreadable), IDI_HAND);
        AnswerStatus(13);
        PressDone(dialog);
        EXPECT_EQ(Translated(emailTaken), user.TakeMessage(title).text);
    }));
}

TEST_P(AccountInLanguage, FailedTransferIsToldInTheFilesWords) {
    const ClosedPort closed;
    SavedRegistryValue nobody(HKEY_CURRENT_USER,
                              L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings",
                              L"ProxyServer", L"127.0.0.1:" + std::to_wstring(closed.Number()));
    EXPECT_FALSE(Create([&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(Translated(creationCaption));
        PressDone(dialog);
        ExpectMessage(user, dialog, Translated(notSent), IDI_HAND);
        PressCancel(dialog);
    }));
}

TEST_P(AccountInLanguage, NewAccountTellsItsNameToTheService) {
    AnswerStatus(0);
    EXPECT_TRUE(
        Create([&](const ScreenUser& user) { PressDone(user.WaitForDialog(Translated(creationCaption))); }));
    const std::vector<CapturedRequest> requests = server.TakeRequests();
    ASSERT_EQ(1U, requests.size());
    EXPECT_THAT(requests[0].body, testing::EndsWith(MapShopReply().Text(GetParam()).bytes));
}

TEST(AccountLanguages, FrenchAndGermanAreThere) {
    EXPECT_THAT(Languages(), testing::IsSupersetOf({L"French", L"German"}));
}
