/* Shows a dialog in a state worth a picture, for tools/screenshots:
 *
 *   orvande-pictures NAME [LANGUAGE]
 *
 * NAME is one of the pictures below. The file of a LANGUAGE has to lie beside the program. Whenever there is
 * something to see, the program prints "shown" and keeps it on the screen until a line comes from the
 * standard input. The last of these views is the picture; an earlier one only has to come to rest before the
 * program goes on. The exit code is 0 when that has worked, 2 for wrong arguments and 3 when the language has
 * no texts. */
#include "helpers/ScreenUser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "HandheldBox.h"
#include "account/AccountTexts.h"
#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "frame/LibraryEntry.h"
#include "ui/Dialog.h"
#include "ui/MessageBoxes.h"
#include "ui/TranslationCatalogue.h"

namespace {

using namespace account_texts;

/* Tells that something is shown and waits until its picture has been taken; the last picture counts. */
void HoldStill() {
    std::puts("shown");
    std::fflush(stdout);
    char line[16];
    if (std::fgets(line, sizeof line, stdin) == nullptr) std::fputs("nobody looked\n", stderr);
}

void Close(HWND dialog) {
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

/* `caption` is that of the English dialog. */
HWND WaitFor(const ScreenUser& user, const WCHAR* caption) {
    return user.WaitForDialog(translationCatalogue.Translate(caption));
}

void FillSignIn(HWND dialog) {
    Type(dialog, USER_ID_FIELD, L"traveller");
    Type(dialog, PASSWORD_FIELD, L"secret99");
}

void SignInAsTraveller(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, signInCaption);
    FillSignIn(dialog);
    HoldStill();
    Close(dialog);
}

void OpenSignInMenu(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, signInCaption);
    FillSignIn(dialog);
    // A dialog that is still coming up would cover the menu.
    HoldStill();
    PressKey(dialog, VK_F2);
    user.WaitForMenu();
    PressKey(dialog, VK_DOWN);
    HoldStill();
    PressKey(dialog, VK_ESCAPE);
    Close(dialog);
}

void FillAccount(HWND dialog, const WCHAR* retyped) {
    Type(dialog, USER_ID_FIELD, L"traveller");
    Type(dialog, PASSWORD_FIELD, L"secret99");
    Type(dialog, RETYPE_FIELD, retyped);
    Type(dialog, NAME_FIELD, L"Zo\x00EB Traveller");
    Type(dialog, EMAIL_FIELD, L"zoe@a.test");
}

void CreateAsTraveller(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, creationCaption);
    FillAccount(dialog, L"secret99");
    HoldStill();
    Close(dialog);
}

/* Its caption is not translated. */
void LookAtBox(const ScreenUser& user) {
    const HWND box = user.WaitForDialog(title);
    FitToScreen(box);
    HoldStill();
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    user.WaitUntil("the end of the box", [&] { return !IsWindow(box); });
}

void MistypeThePassword(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, creationCaption);
    FillAccount(dialog, L"secret");
    PressKey(dialog, VK_F1);
    LookAtBox(user);
    Close(dialog);
}

void Provoke(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, creationCaption);
    PressKey(dialog, VK_F1);
    LookAtBox(user);
    Close(dialog);
}

/* The messages of the account, but for those that are short in every language. */
constexpr const WCHAR* messages[] = {nothingToCheck, unknownUser,   wrongPassword, problem,
                                     nameTaken,      shortPassword, emailTaken,    badEmail};

/* The one that is the longest in this language; in English. */
WideString LongestMessage() {
    return *std::ranges::max_element(
        messages, {}, [](const WCHAR* text) { return translationCatalogue.Translate(text).size(); });
}

/* Looks as the creation of an account, and has but one thing to say. */
class TellingDialog : public Dialog {
public:
    TellingDialog() : Dialog(CREATE_ACCOUNT_DIALOG) {}

    void OnOK() override { ShowTranslatedMessage(window, MB_ICONHAND, LongestMessage()); }
};

void ShowSignIn() {
    Account account;
    SignInDialog(account).DoModal(nullptr);
}

void ShowCreateAccount() {
    Account account;
    account.productName = L"Orvande Pictures";
    CreateAccountDialog(account).DoModal(nullptr);
}

void ShowLongestMessage() {
    TellingDialog().DoModal(nullptr);
}

struct Picture {
    std::string_view name;
    void (*show)();
    void (*act)(const ScreenUser& user);
};

constexpr Picture pictures[] = {
    {"sign-in", ShowSignIn, SignInAsTraveller},
    {"sign-in-menu", ShowSignIn, OpenSignInMenu},
    {"create-account", ShowCreateAccount, CreateAsTraveller},
    {"message", ShowCreateAccount, MistypeThePassword},
    {"long-message", ShowLongestMessage, Provoke},
};

bool Show(std::string_view name) {
    for (const Picture& picture : pictures) {
        if (picture.name != name) continue;
        const ScreenUser user(picture.act);
        picture.show();
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    // What goes wrong with the user ends the program badly.
    testing::GTEST_FLAG(throw_on_failure) = true;
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return 2;
    AttachLibrary(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr);
    const std::string_view language = argc > 2 ? argv[2] : "English";
    if (!translationCatalogue.SetLanguage({language.begin(), language.end()})) return 3;
    return Show(argv[1]) ? 0 : 2;
}
