/* The companion's calls that show a dialog. */
#include "AccountDialogFlow.h"
#include "DialogRows.h"
#include "DialogScripts.h"

std::vector<FlowRow> CompanionDialogRows() {
    const std::string_view signedIn = "1, error 0, Anna/Secret-1/0, saved, asked";
    const std::string_view left = "0, error cancelled, as it was, none";
    const std::string_view notShown = "0, error E, as it was, none";
    const std::string_view withoutMemory = "0, error 8, as it was, none";
    const std::string_view notSavedNorEnded = "+0, error cancelled, Anna/Secret-1/0, none, asked";
    const std::vector<Statement> leaving = StatementsOf({left, notShown, withoutMemory, left});
    // The user is told what has failed, and tries again. What he tried last is in the record, but for the
    // password of a sign-in.
    const auto asking = [&](std::string_view tried, std::string_view triedAndAsked) {
        std::vector<Statement> statements = StatementsOf({signedIn, notShown, withoutMemory, left});
        for (const std::string_view call :
             {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"})
            statements.push_back({call, {signedIn, tried}});
        // There may be no memory left to tell him.
        statements.push_back(
            {"InternetReadFile", {signedIn, triedAndAsked, "+0, error 8, as it was, none, asked"}});
        // What cannot be read of a field is empty.
        for (const std::string_view call : {"SendDlgItemMessageW", "GetDlgItemTextW"})
            statements.push_back(
                {call,
                 {signedIn, "+0, error cancelled, //0, none", "+0, error cancelled, Anna//0, none", "..."}});
        // Signed in, but not saved; or not even ended.
        return With(statements, {{"SHGetSpecialFolderPathW",
                                  {"1, error 3, Anna/Secret-1/0, none, asked", notSavedNorEnded}},
                                 {"_wfopen", {"1, error E, Anna/Secret-1/0, none, asked", notSavedNorEnded}},
                                 {"fwrite",
                                  {"1, error E, Anna/Secret-1/0, cut, asked",
                                   "+0, error cancelled, Anna/Secret-1/0, cut, asked"}},
                                 {"EndDialog", {"+0, error cancelled, Anna/Secret-1/0, saved, asked"}},
                                 // What he tried is lost with a message, or with the memory for it.
                                 {"CallWindowProcW", {tried}},
                                 {"IsWindowEnabled", {tried}},
                                 {"memory", {signedIn, "1, error 8, Anna/Secret-1/0, none, asked", tried}}});
    };
    const std::vector<Statement> signing =
        asking("+0, error cancelled, Anna//0, none", "+0, error cancelled, Anna//0, none, asked");
    std::vector<Statement> creating = asking("+0, error cancelled, Anna/Secret-1/0, none",
                                             "+0, error cancelled, Anna/Secret-1/0, none, asked");
    const std::vector<std::string_view> emptyFields = {
        "1, error 0, /Secret-1/0, cut, asked", "1, error 0, Anna//0, saved, asked",
        "+1, error 8, /Secret-1/0, none, asked", "+1, error 8, Anna//0, none, asked"};
    creating = With(creating, {{"SendDlgItemMessageW", emptyFields}, {"GetDlgItemTextW", emptyFields}});
    const MapShopReply accepted = MapShopReply().Int32(0).Int32(0);
    std::vector<FlowRow> rows;
    const auto add = [&](const char* name, auto make, std::string_view success,
                         const std::vector<Statement>& statements) {
        rows.push_back(
            {name, Library::Account, make, success, statements, AccountBoxes(), callsThatDoNotFail});
    };
    add("AccountShowSignIn", Make<ShowSignIn>(DialogScript(SignInAsAnna), accepted), signedIn, signing);
    add("AccountShowSignInCancelled", Make<ShowSignIn>(DialogScript(Leave), accepted), left, leaving);
    add("AccountShowCreate", Make<ShowCreate>(DialogScript(CreateAnna), accepted), signedIn, creating);
    add("AccountShowCreateCancelled", Make<ShowCreate>(DialogScript(Leave), accepted), left, leaving);
    return rows;
}
