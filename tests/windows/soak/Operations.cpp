#include "soak/Operations.h"

#include <array>
#include <cstdio>

#include "account/AccountTexts.h"
#include "helpers/Widened.h"
#include "resources/ResourceIds.h"

int LM_CALL CountDown(void* left) {
    return --*static_cast<int*>(left) != 0 ? 1 : 0;
}

void Hash::Take(const void* data, size_t size) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    for (size_t i = 0; i < size; ++i) {
        value ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320 : 0);
    }
}

std::string Hash::Text() const {
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08x", static_cast<unsigned>(~value));
    return text.data();
}

namespace {

/* One of the dialogs, and how its user leaves it. */
struct Screen {
    const WCHAR* caption;
    void (*fill)(HWND dialog, const std::wstring& userId, const std::wstring& password);
    void (*cancel)(const ScreenUser& user, HWND dialog);
};

void FillSignIn(HWND dialog, const std::wstring& userId, const std::wstring& password) {
    Put(dialog, USER_ID_FIELD, userId);
    Put(dialog, PASSWORD_FIELD, password);
}

void FillCreation(HWND dialog, const std::wstring& userId, const std::wstring& password) {
    FillSignIn(dialog, userId, password);
    Put(dialog, RETYPE_FIELD, password);
    Put(dialog, NAME_FIELD, L"Somebody");
    Put(dialog, EMAIL_FIELD, userId + L"@example.org");
}

void CancelByMenu(const ScreenUser& user, HWND dialog) {
    PressButton(MenuBarOf(dialog), 1);
    user.WaitForMenu();
    PressKey(dialog, VK_UP);
    PressKey(dialog, VK_RETURN);
}

constexpr Screen signIn{account_texts::signInCaption, FillSignIn, CancelByMenu};
constexpr Screen creation{account_texts::creationCaption, FillCreation,
                          [](const ScreenUser&, HWND dialog) { PressButton(MenuBarOf(dialog), 1); }};

ScreenUser::Script ScriptFor(const Screen& screen, const Words& words, std::wstring& shown) {
    return [&](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(screen.caption);
        if (words.at(2) == "cancel") return screen.cancel(user, dialog);
        screen.fill(dialog, Widened(words[0]), Widened(words[1]));
        PressButton(MenuBarOf(dialog), 0);
        if (words[2] == "accepted") return;
        shown = user.TakeMessage(account_texts::title).text;
        screen.cancel(user, user.WaitForDialog(screen.caption));
    };
}

}  // namespace

ScreenUser::Script SignInScript(const Words& words, std::wstring& shown) {
    return ScriptFor(signIn, words, shown);
}

ScreenUser::Script CreationScript(const Words& words, std::wstring& shown) {
    return ScriptFor(creation, words, shown);
}
