/* Dialogs with menu bars, in another language: those of the framework, and the library's own. */
#include "account/CreateAccountDialog.h"
#include "account/SignInDialog.h"
#include "base/Contained.h"
#include "resources/TestResources.h"
#include "support/MapShopReply.h"
#include "torture/DeviceFile.h"
#include "torture/DialogRows.h"
#include "torture/Flow.h"
#include "ui/FormDialog.h"
#include "ui/TextDialog.h"
#include "ui/TranslationCatalogue.h"

namespace {

class DialogFlow : public Flow {
public:
    explicit DialogFlow(DialogScript userScript) : script(std::move(userScript)) {}

    void SetUp() override {
        DeviceFile(u"\\Storage\\Language.txt")
            .Put(
                "A form\tEen formulier\nName\tNaam\nDone\tGedaan\nCancel\tAnnuleren\nMenu\tKeuze\n"
                "About\tOver\nUser ID\tGebruiker\nNew Account\tNieuw\n");
    }
    void Prepare() override {
        translationCatalogue.LoadTranslationFile(TEXT("\\Storage\\Language.txt"));
        UseDialogToItsEnd(script);
    }
    void Run() override {
        result = 0;
        hasMemory = RunContained([this] { result = Show(); });
    }
    std::string Outcome() override {
        return hasMemory ? "ended with " + std::to_string(result) : "no memory";
    }

protected:
    virtual int Show() = 0;

private:
    const DialogScript script;
    int result = 0;
    bool hasMemory = false;
};

class ShowForm : public DialogFlow {
public:
    using DialogFlow::DialogFlow;

private:
    int Show() override {
        FormDialog dialog;
        return dialog.DoModal(nullptr);
    }
};

class ShowText : public DialogFlow {
public:
    using DialogFlow::DialogFlow;

private:
    int Show() override { return RunTextDialog(TEXT_DIALOG, nullptr, text, SHOWN_TEXT, SIGN_IN_MENU_BAR); }
    const WideString text = TEXT("All maps are free, and a text of some length.");
};

/* The sign-in dialog, from which other ways lead. */
class ShowOwnSignIn : public DialogFlow {
public:
    ShowOwnSignIn(DialogScript userScript, DialogScript nextScript)
        : DialogFlow(std::move(userScript)), next(std::move(nextScript)) {}

    void SetUp() override {
        DialogFlow::SetUp();
        device.MakeFolder(u"\\Application Data\\Orvande");
        settings.emplace(u"\\Application Data\\Orvande\\settings.ini");
        device.AddHost(u"online.orvande.example", 80,
                       WebReply::WithBody(MapShopReply().Int32(0).Int32(0).bytes));
    }
    void Prepare() override {
        settings->Remove();
        account.emplace();
        DialogFlow::Prepare();
        if (next) UseDialogToItsEnd(next);
    }
    std::string Outcome() override {
        const std::string outcome = DialogFlow::Outcome();
        const std::string page = device.StartedPrograms().empty() ? "" : ", page opened";
        return outcome + page + (settings->Take() == "UserID=Anna\r\n" ? ", saved" : "");
    }
    void CleanUp() override { account.reset(); }

private:
    int Show() override { return RunSignInDialog(*account, nullptr) ? IDOK : IDCANCEL; }

    const DialogScript next;
    std::optional<DeviceFile> settings;
    std::optional<Account> account;
};

void ChooseNewAccount(DialogUser& user) {
    ChooseIfThere(user, NEW_ACCOUNT_COMMAND);
}

void ChooseForgotten(DialogUser& user) {
    if (!ChooseIfThere(user, FORGOT_COMMAND)) return;
    Leave(user);
}

}  // namespace

std::vector<FlowRow> DialogRows() {
    const std::vector<std::string_view> internal = {
        "box Internal error: Dialog *",
        "box Internal error: Failed to set up toolbar *",
    };
    std::vector<FlowRow> rows;
    const auto add = [&](const char* name, auto make, std::string_view success, std::string_view destroyed,
                         const std::vector<std::string_view>& boxes, const std::vector<Statement>& others) {
        const std::string_view notShown = destroyed == "ended with 0" ? "ended with -1" : "ended with 2";
        const std::vector<Statement> statements =
            With(StatementsOf({success, notShown, notShown, destroyed}), others);
        rows.push_back({name, Library::Online, make, success, statements, boxes, callsThatDoNotFail});
    };
    const std::vector<Statement> throwing = {{"memory", {"no memory"}}};
    // Not even ended, and destroyed at last; or left by the user without its menu bar.
    const std::vector<Statement> ending = With(throwing, {{"EndDialog", {"+ended with 2"}},
                                                          {"SetWindowLongPtrW 1", {"+ended with 0"}},
                                                          {"SetWindowLongPtrW 2", {"+ended with 0"}},
                                                          {"SHCreateMenuBar", {"+ended with 0"}}});
    add("DialogDone", Make<ShowForm>(PressDone), "ended with 1", "ended with 0", internal, ending);
    add("DialogCancelled", Make<ShowForm>(Leave), "ended with 2", "ended with 0", internal, ending);
    add("TextDialog", Make<ShowText>(Leave), "ended with 2", "ended with 2", internal, throwing);
    // The user is told what has failed, and tries again; an account that is not saved is there all the same.
    // What cannot be read of a field is empty.
    std::vector<Statement> creating = {
        {"SetWindowLongPtrW", {"ended with 1, saved", "ended with 2", "+ended with 2, saved"}},
        {"EndDialog", {"ended with 2, saved"}},
        {"memory", {"ended with 1, saved", "ended with 1"}},
    };
    for (const std::string_view call : {"SendDlgItemMessageW", "GetDlgItemTextW"})
        creating.push_back({call, {"ended with 1, saved", "ended with 1", "+ended with 2"}});
    for (const std::string_view call :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW", "InternetReadFile"})
        creating.push_back({call, {"ended with 1, saved", "+ended with 2"}});
    for (const std::string_view call : {"SHGetSpecialFolderPathW", "_wfopen", "fwrite"})
        creating.push_back({call, {"ended with 1", "+ended with 2"}});
    add("SignInThroughNewAccount",
        Make<ShowOwnSignIn>(DialogScript(ChooseNewAccount), DialogScript(CreateAnna)), "ended with 1, saved",
        "ended with 2", AccountBoxes(), creating);
    add("ForgottenPassword", Make<ShowOwnSignIn>(DialogScript(ChooseForgotten), DialogScript()),
        "ended with 2, page opened", "ended with 2", AccountBoxes(), {{"ShellExecuteExW", {"ended with 2"}}});
    return rows;
}
