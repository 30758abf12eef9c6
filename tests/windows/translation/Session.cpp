/* Uses the account's finished DLL for one session, as a translator who wants to see its texts:
 *
 *   account-session FOLDER LANGUAGE STEP ...
 *
 * The DLL and its language files lie in FOLDER, and the user's documents are its folder Documents. The user's
 * language is LANGUAGE; with - he has chosen none. Prints in UTF-8 what is shown, a text a line, line breaks
 * as \n. A step is
 *
 *   sign-in, create   shows that dialog, in which the user takes the steps up to the next dialog
 *   type, retype      types a password, or types it again
 *   ok                presses the first soft key, and OK in the message that comes of it
 *   NUMBER            as ok, and the service answers this status
 *   nothing, nobody   as ok, and the service answers an empty reply, or cannot be reached
 *   cancel            presses the second soft key
 *   menu              the same, and chooses the last item of the menu that comes of it
 *   end               waits until the dialog has ended by itself
 *
 * The exit code is 0 when all that has worked. */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <span>
#include <string>

#include "LMAccount.h"
#include "helpers/ClosedPort.h"
#include "helpers/LoadedModule.h"
#include "helpers/MovedFolder.h"
#include "helpers/SavedRegistryValue.h"
#include "helpers/ScreenUser.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "helpers/Widened.h"
#include "resources/ResourceIds.h"
#include "support/MapShopReply.h"

namespace {

using Steps = std::span<const std::string>;

void Print(std::wstring text) {
    if (text.empty()) return;
    for (size_t at = 0; (at = text.find(L'\n', at)) != std::wstring::npos; ++at)
        text.replace(at, 1, L"\\n");
    char line[4000];
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, line, sizeof line, nullptr, nullptr);
    std::puts(length > 0 ? line : "a text that is too long");
}

void PrintAll(const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts)
        Print(text);
}

/* One dialog, and what its user does there. Which language it is in is not known. */
class DialogSession {
public:
    DialogSession(const ScreenUser& acting, DWORD dialogThread, ScriptedServer& service)
        : user(acting), thread(dialogThread), server(service), dialog(WaitForDialog()) {}

    void Take(Steps steps) const {
        PrintDialog();
        for (const std::string& step : steps)
            Take(step);
    }

private:
    struct Step {
        std::string_view name;
        void (DialogSession::*take)() const;
    };

    /* The only dialog that can be used, once it waits for its user. */
    [[nodiscard]] HWND WaitForDialog() const {
        HWND usable = nullptr;
        user.WaitUntil("a dialog", [&] {
            const std::vector<HWND> dialogs = WindowsOf(thread, L"#32770");
            const auto found = std::ranges::find_if(dialogs, IsWindowEnabled);
            if (found != dialogs.end()) usable = *found;
            return usable != nullptr;
        });
        SendMessageW(usable, WM_NULL, 0, 0);
        return usable;
    }

    void PrintDialog() const {
        Print(TextOf(dialog));
        for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            WCHAR name[20]{};
            GetClassNameW(child, name, static_cast<int>(std::size(name)));
            if (lstrcmpiW(name, L"edit") != 0) Print(TextOf(child));
        }
        PrintAll(ButtonTextsOf(MenuBarOf(dialog)));
    }

    void Take(const std::string& name) const {
        static constexpr Step steps[] = {
            {"type", &DialogSession::TypeCredentials}, {"retype", &DialogSession::Retype},
            {"ok", &DialogSession::PressOk},           {"nothing", &DialogSession::AnswerNothing},
            {"nobody", &DialogSession::ReachNobody},   {"cancel", &DialogSession::Cancel},
            {"menu", &DialogSession::CancelByMenu},    {"end", &DialogSession::WaitForEnd},
        };
        const auto* const step = std::ranges::find(steps, name, &Step::name);
        if (step != std::end(steps)) return (this->*step->take)();
        server.Answer(MapShopReply().Int32(std::stoi(name)).bytes);
        PressOk();
    }

    void TypeCredentials() const {
        if (GetDlgItem(dialog, RETYPE_FIELD) == nullptr) Type(dialog, USER_ID_FIELD, L"Anna");
        Type(dialog, PASSWORD_FIELD, L"Secret-1");
    }

    void Retype() const { Type(dialog, RETYPE_FIELD, L"Secret-1"); }

    void PressOk() const {
        EXPECT_EQ(dialog, WaitForDialog());
        PressButton(MenuBarOf(dialog), 0);
        Print(user.TakeMessage(L"Orvande Online").text);
    }

    void AnswerNothing() const {
        server.Answer("");
        PressOk();
    }

    void ReachNobody() const {
        const ClosedPort closed;
        const SavedRegistryValue elsewhere(HKEY_CURRENT_USER,
                                           L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings",
                                           L"ProxyServer", L"127.0.0.1:" + std::to_wstring(closed.Number()));
        PressOk();
    }

    void Cancel() const {
        EXPECT_EQ(dialog, WaitForDialog());
        PressButton(MenuBarOf(dialog), 1);
    }

    void CancelByMenu() const {
        Cancel();
        PrintAll(ItemTextsOf(user.WaitForMenu()));
        PressKey(dialog, VK_UP);
        PressKey(dialog, VK_RETURN);
    }

    void WaitForEnd() const {
        user.WaitUntil("the dialog's end", [&] { return !IsWindow(dialog); });
    }

    const ScreenUser& user;
    const DWORD thread;
    ScriptedServer& server;
    const HWND dialog;
};

bool IsDialog(const std::string& step) {
    return step == "sign-in" || step == "create";
}

void Run(const LoadedModule& module, Steps steps) {
    ScriptedServer server;
    const WebProxy proxy(server.Port());
    const DWORD thread = GetCurrentThreadId();
    while (!steps.empty()) {
        const LMAccountShowSignInFunction show =
            module.Find(steps[0] == "sign-in" ? "LMAccountShowSignIn" : "LMAccountShowCreate");
        const auto next = std::find_if(steps.begin() + 1, steps.end(), IsDialog);
        const auto count = static_cast<size_t>(next - steps.begin());
        const Steps inDialog = steps.subspan(1, count - 1);
        LMAccountRecord record{};
        record.size = sizeof record;
        const ScreenUser user(
            [&](const ScreenUser& acting) { DialogSession(acting, thread, server).Take(inDialog); });
        EXPECT_EQ(0, show(&record, nullptr));
        steps = steps.subspan(count);
    }
}

}  // namespace

int main(int argc, char** argv) {
    // What goes wrong with the user ends the program badly.
    testing::GTEST_FLAG(throw_on_failure) = true;
    testing::InitGoogleTest(&argc, argv);
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (arguments.size() < 3 || !IsDialog(arguments[2])) return 2;
    const std::wstring folder = Widened(arguments[0]);
    const MovedFolder documents(L"Personal", folder + L"\\Documents");
    std::optional<SavedRegistryValue> language;
    if (arguments[1] != "-")
        language.emplace(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", Widened(arguments[1]));
    Run(LoadedModule((folder + L"\\OrvandeAccount.dll").c_str()), Steps(arguments).subspan(2));
    return 0;
}
