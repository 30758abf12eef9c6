/* A new account that the service or the dialog itself refuses, with each of the boxes that tell so. */
#include "AccountDialogFlow.h"
#include "DialogRows.h"
#include "resources/ResourceIds.h"

namespace {

/* Types nothing that is not there from the beginning, whose user ID is "before". */
class ShowRefusedCreate : public ShowCreate {
public:
    using ShowCreate::ShowCreate;
    void Prepare() override {
        ShowCreate::Prepare();
        saved = "UserID=before\r\n";
    }
};

/* Asks for the account that is typed there from the beginning, and gives up when it is refused. */
void AskAndLeave(DialogUser& user) {
    PressIfThere(user, IDOK);
    Leave(user);
}

void TypeTwoPasswords(DialogUser& user) {
    TypeIfThere(user, PASSWORD_FIELD, u"Secret-1");
    AskAndLeave(user);
}

constexpr std::string_view left = "0, error cancelled, as it was, none";

std::vector<Statement> Refused(std::string_view success) {
    const std::string_view notShown = "0, error E, as it was, none";
    const std::string_view withoutMemory = "0, error 8, as it was, none";
    std::vector<Statement> statements = StatementsOf({success, notShown, withoutMemory, left});
    for (const std::string_view call :
         {"InternetOpenW", "InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"})
        statements.push_back({call, {left}});
    // What cannot be written into a field or read of it is empty. Two passwords that are, are the same.
    std::vector<std::string_view> empty = {"0, error cancelled, //0, none, asked",
                                           "+0, error cancelled, //0, none", success, "..."};
    if (success == left) {
        empty.push_back("1, error 0, before/Secret-1/0, saved, asked");
        empty.push_back("+0, error cancelled, before/Secret-1/0, none");
    }
    return With(statements, {
                                {"GetDlgItem 1", empty},
                                {"SetWindowTextW 1", empty},
                                {"SendDlgItemMessageW", empty},
                                {"GetDlgItemTextW", empty},
                                // A dialog that ran out of memory for its fields, but cannot be ended.
                                {"EndDialog", {success, "+0, error cancelled, //0, none, asked"}},
                                {"CallWindowProcW", {left}},
                                {"IsWindowEnabled", {left}},
                                {"memory", {left, success, "0, error 8, as it was, none, asked"}},
                            });
}

}  // namespace

std::vector<FlowRow> RefusedAccountRows() {
    std::vector<FlowRow> rows;
    const auto add = [&](const char* name, const MapShopReply& reply, DialogScript script,
                         std::string_view success) {
        std::vector<std::string_view> boxes = AccountBoxes();
        boxes.push_back(success.substr(success.find("box ")));
        rows.push_back({name, Library::Account, Make<ShowRefusedCreate>(script, reply), success,
                        Refused(success.substr(0, success.find("; box "))), boxes, callsThatDoNotFail});
    };
    const auto refuse = [&](const char* name, int32_t code, std::string_view success) {
        add(name, MapShopReply().Int32(code), AskAndLeave, success);
    };
    refuse(
        "AccountNameTaken", 2,
        "0, error cancelled, as it was, none, asked; box Orvande Online: This user name is already in use. "
        "If this is your account and you have forgotten the User ID or Password, click \"Cancel\" and "
        "\"I Forgot\" to recover them.");
    refuse("AccountPasswordTooShort", 3,
           "0, error cancelled, as it was, none, asked; box Orvande Online: The password must be at least 6 "
           "letters or numbers");
    refuse("AccountEmailTaken", 13,
           "0, error cancelled, as it was, none, asked; box Orvande Online: An account already exists with "
           "the same email address. Please sign in to that account. If you have forgotten the User ID or "
           "Password, click \"Forgot\" to recover them.");
    refuse("AccountEmailNotValid", 14,
           "0, error cancelled, as it was, none, asked; box Orvande Online: You must provide a valid email "
           "address.");
    refuse("AccountRefusedOtherwise", 99,
           "0, error cancelled, as it was, none, asked; box Orvande Online: The server returned error code "
           "99");
    add("AccountAnswerCut", MapShopReply(), AskAndLeave,
        "0, error cancelled, as it was, none, asked; box Orvande Online: Internal server error");
    add("AccountPasswordsDiffer", MapShopReply().Int32(0), TypeTwoPasswords,
        "0, error cancelled, as it was, none; box Orvande Online: The passwords do not match");
    return rows;
}
