/* Each message box that is no dialog's, and opening documents. */
#include "Flow.h"

#include "account/SignIn.h"
#include "base/Contained.h"
#include "frame/OpenWithShell.h"
#include "frame/ResourceModule.h"
#include "support/MapShopReply.h"
#include "transport/WebConnection.h"
#include "ui/MessageBoxes.h"

namespace {

/* Calls something that may throw, whose result is a number. */
class Asking : public Flow {
public:
    explicit Asking(std::function<int()> question) : ask(std::move(question)) {}

    void Run() override {
        hasMemory = RunContained([this] { answer = ask(); });
    }
    std::string Outcome() override { return hasMemory ? "answer " + std::to_string(answer) : "no memory"; }

private:
    const std::function<int()> ask;
    int answer = 0;
    bool hasMemory = false;
};

/* The service has an answer for who signs in; the boxes are SignIn's. */
class AskedSignIn : public Flow {
public:
    explicit AskedSignIn(int32_t serviceStatus) : status(serviceStatus) {}

    void SetUp() override {
        device.AddHost(u"online.orvande.example", 80,
                       WebReply::WithBody(MapShopReply().Int32(status).Int32(0).bytes));
        account.userId = TEXT("Anna");
        if (status >= 0) account.password = TEXT("secret1");
    }
    void Run() override { isSignedIn = SignIn(account, nullptr); }
    std::string Outcome() override { return isSignedIn ? "signed in" : "refused"; }

private:
    const int32_t status;
    Account account;
    bool isSignedIn = false;
};

/* A connection while the phone is roaming, which the user allows or refuses. */
class RoamingQuestion : public Flow {
public:
    explicit RoamingQuestion(int userAnswer) : answer(userAnswer) {}

    void SetUp() override {
        device.SetRegistryValue(HKEY_LOCAL_MACHINE, u"System\\State\\Phone", u"Status", REG_DWORD,
                                {"\0\2\0\0", 4});
    }
    void Prepare() override {
        device.AnswerMessageBox(answer);
        roamingWarningAccepted = false;
        connection.emplace(TEXT("maps.example"), true, false);
        connection->ownerWindow = reinterpret_cast<HWND>(uintptr_t{0x1230});
    }
    void Run() override {
        hasMemory = RunContained([this] { isConnected = connection->Connect(); });
    }
    std::string Outcome() override { return !hasMemory ? "no memory" : isConnected ? "connected" : "failed"; }
    void CleanUp() override { connection.reset(); }

private:
    const int answer;
    std::optional<WebConnection> connection;
    bool isConnected = false;
    bool hasMemory = false;
};

class OpeningPage : public Flow {
public:
    void Run() override { isOpened = OpenWithShell(page, nullptr, true); }
    std::string Outcome() override { return isOpened ? "opened" : "not opened"; }

private:
    const WideString page = TEXT("http://www.orvande.example/forgot.htm");
    bool isOpened = false;
};

int ShowFormat() {
    return ShowTranslatedMessageFormat(nullptr, MB_ICONHAND, TEXT("The server returned error code %d"), 17);
}

}  // namespace

std::vector<FlowRow> MessageRows() {
    static const WideString text = TEXT("Problem communicating over the internet");
    // A box that cannot be shown gives 0, as the system does.
    const std::vector<Statement> asking = {{"MessageBoxW", {"answer 0"}}, {"memory", {"no memory"}}};
    std::vector<FlowRow> rows;
    rows.push_back({"TranslatedMessage", Library::Online,
                    Make<Asking>([] { return ShowTranslatedMessage(nullptr, MB_ICONHAND, text); }),
                    "answer 1; box Orvande Online: Problem communicating over the internet", asking});
    rows.push_back({"PlainMessage", Library::Online,
                    Make<Asking>([] { return ShowPlainMessage(nullptr, 0, text); }),
                    "answer 1; box Orvande Online: Problem communicating over the internet", asking});
    rows.push_back({"FormattedMessage", Library::Online, Make<Asking>(ShowFormat),
                    "answer 1; box Orvande Online: The server returned error code 17", asking});
    rows.push_back({"MissingResourceLibrary",
                    Library::Online,
                    Make<Asking>([] { return GetResourceModule(5000) != nullptr ? 1 : 0; }),
                    "answer 0; box Error: Failed to load Res.dll Please re-install the software",
                    {{"MessageBoxW", {"answer 0"}}}});
    const std::string_view problem =
        "refused; box Orvande Online: A problem occured communicating with the server";
    const auto signing = [&](const char* name, int32_t status, std::string_view outcome) {
        rows.push_back(
            {name, Library::Online, Make<AskedSignIn>(status), outcome, {{"MessageBoxW", {"refused"}}}});
        // Whatever fails, the user is told that there is a problem.
        for (const std::string_view failure : {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW",
                                               "HttpSendRequestW", "InternetReadFile", "memory"})
            rows.back().statements.push_back({failure, {problem, "+refused"}});
    };
    signing("SignIn", 0, "signed in");
    signing(
        "UnknownUser", 4,
        "refused; box Orvande Online: The User ID is not correct. If you have lost your ID, click the \"I "
        "Forgot\" button. Do not create more than one account.");
    signing("WrongPassword", 5,
            "refused; box Orvande Online: The Password is not correct. If you have lost your password, click "
            "the \"I Forgot\" button.");
    signing("OtherRefusal", 1, problem);
    signing("NoPassword", -1,
            "refused; box Orvande Online: You must provide a user name and password to access your account.");
    const std::string_view roams =
        "connected; box Orvande Online: Your phone is roaming, and you may incur data charges.";
    const std::string_view stays =
        "failed; box Orvande Online: Your phone is roaming, and you may incur data charges.";
    const std::string_view unasked = "connected";
    rows.push_back({"RoamingRefused",
                    Library::Online,
                    Make<RoamingQuestion>(IDCANCEL),
                    stays,
                    {
                        {"RegOpenKeyExW", {unasked, "+failed"}},
                        {"RegQueryValueExW", {unasked, "+failed"}},
                        // A question that cannot be shown refuses nothing.
                        {"MessageBoxW", {unasked, "+failed"}},
                        {"RegCloseKey", {stays, "+failed"}},
                        {"memory", {"no memory"}},
                    }});
    rows.push_back({"RoamingQuestion",
                    Library::Online,
                    Make<RoamingQuestion>(IDOK),
                    roams,
                    {
                        // A phone that tells no state does not roam.
                        {"RegOpenKeyExW", {unasked, "+failed"}},
                        {"RegQueryValueExW", {unasked, "+failed"}},
                        {"MessageBoxW", {unasked, "+failed"}},
                        {"InternetConnectW", {stays}},
                        {"memory", {"no memory"}},
                    }});
    rows.back().statements.push_back({"RegCloseKey", {roams, "+failed"}});
    rows.push_back({"OpenedPage",
                    Library::Online,
                    Make<OpeningPage>(),
                    "opened",
                    {{"ShellExecuteExW", {"not opened"}}}});
    return rows;
}
