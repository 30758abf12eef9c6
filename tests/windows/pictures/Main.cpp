/* Shows a dialog in a state worth a picture, for tools/screenshots:
 *
 *   orvande-pictures NAME [LANGUAGE]
 *
 * NAME is one of the states below. With a language, its file has to lie beside the program. Prints "shown"
 * when all is on the screen and keeps it there until a line comes from the standard input; on the way too,
 * where it has to wait. The exit code is 0 when that has worked. */
#include "helpers/ScreenUser.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "frame/LibraryEntry.h"
#include "ui/FormDialog.h"
#include "ui/TextDialog.h"
#include "ui/TranslationCatalogue.h"

namespace {

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

void FillForm(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, L"A form");
    Type(dialog, FORM_FIELD, L"Corsica");
    SendDlgItemMessageW(dialog, FORM_BOX, BM_SETCHECK, BST_CHECKED, 0);
    HoldStill();
    Close(dialog);
}

void ReadText(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, L"About");
    HoldStill();
    Close(dialog);
}

void FillSignIn(HWND dialog) {
    Type(dialog, USER_ID_FIELD, L"traveller");
    Type(dialog, PASSWORD_FIELD, L"secret99");
}

void SignInAsTraveller(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, L"Sign in to Your Account");
    FillSignIn(dialog);
    HoldStill();
    Close(dialog);
}

void OpenSignInMenu(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, L"Sign in to Your Account");
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
    const HWND dialog = WaitFor(user, L"Create Account");
    FillAccount(dialog, L"secret99");
    HoldStill();
    Close(dialog);
}

void MistypeThePassword(const ScreenUser& user) {
    const HWND dialog = WaitFor(user, L"Create Account");
    FillAccount(dialog, L"secret");
    PressKey(dialog, VK_F1);
    const HWND box = WaitFor(user, L"Orvande Online");
    HoldStill();
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    user.WaitUntil("the end of the box", [&] { return !IsWindow(box); });
    Close(dialog);
}

void ShowForm() {
    FormDialog().DoModal(nullptr);
}

void ShowText() {
    const WideString text = translationCatalogue.Translate(
        L"Maps of 48 countries, from the Azores to Cyprus, are in the map shop. Search it by region, and "
        L"download what you need before you leave.");
    RunTextDialog(TEXT_DIALOG, nullptr, text, SHOWN_TEXT, DONE_CANCEL_MENU_BAR);
}

void ShowSignIn() {
    Account account;
    SignInDialog(account).DoModal(nullptr);
}

void ShowCreateAccount() {
    Account account;
    account.productName = L"Orvande Pictures";
    CreateAccountDialog(account).DoModal(nullptr);
}

struct Picture {
    std::string_view name;
    void (*show)();
    void (*act)(const ScreenUser& user);
};

constexpr Picture pictures[] = {
    {"form", ShowForm, FillForm},
    {"text", ShowText, ReadText},
    {"sign-in", ShowSignIn, SignInAsTraveller},
    {"sign-in-menu", ShowSignIn, OpenSignInMenu},
    {"create-account", ShowCreateAccount, CreateAsTraveller},
    {"message", ShowCreateAccount, MistypeThePassword},
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
