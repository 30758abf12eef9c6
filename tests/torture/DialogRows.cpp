#include "DialogRows.h"

#include <algorithm>

#include "resources/ResourceIds.h"

const std::vector<std::string_view> callsThatDoNotFail = {"GetWindowLongPtrW"};

void SignInAsAnna(DialogUser& user) {
    TypeIfThere(user, USER_ID_FIELD, u"Anna");
    TypeIfThere(user, PASSWORD_FIELD, u"Secret-1");
    PressDone(user);
}

void CreateAnna(DialogUser& user) {
    TypeIfThere(user, USER_ID_FIELD, u"Anna");
    TypeIfThere(user, PASSWORD_FIELD, u"Secret-1");
    TypeIfThere(user, EMAIL_FIELD, u"anna@example.org");
    for (int time = 0; time < 2; ++time) {
        TypeIfThere(user, RETYPE_FIELD, u"Secret-1");
        PressIfThere(user, IDOK);
    }
}

void PressDone(DialogUser& user) {
    PressIfThere(user, IDOK);
    PressIfThere(user, IDOK);
}

void Leave(DialogUser& user) {
    if (!PressIfThere(user, IDCANCEL)) ChooseIfThere(user, IDCANCEL);
}

std::vector<Statement> StatementsOf(const DialogOutcomes& outcomes) {
    const std::string_view notShown = outcomes.notShown;
    const std::string_view destroyed = outcomes.destroyed;
    return {
        {"FindResourceW", {notShown}},
        {"LoadResource", {notShown}},
        {"DialogBoxIndirectParamW", {notShown}},
        // Those that bind the window. One that cannot be unbound passes its last messages on.
        {"SetWindowLongPtrW 1", {notShown}},
        {"SetWindowLongPtrW 2", {notShown}},
        {"SHCreateMenuBar", {notShown}},
        // A message that gets lost comes again.
        {"CallWindowProcW", {outcomes.success, destroyed, "..."}},
        {"IsWindowEnabled", {outcomes.success, destroyed, "..."}},
        {"EndDialog", {outcomes.success, destroyed}},
        {"memory", {outcomes.withoutMemory}},
    };
}

std::vector<Statement> With(std::vector<Statement> statements, const std::vector<Statement>& others) {
    for (const Statement& other : others) {
        const auto same = std::ranges::find(statements, other.failure, &Statement::failure);
        if (same == statements.end())
            statements.push_back(other);
        else
            same->outcomes.insert(same->outcomes.end(), other.outcomes.begin(), other.outcomes.end());
    }
    return statements;
}

std::vector<std::string_view> AccountBoxes() {
    return {
        "box Internal error: Dialog 107 failed: err=*",
        "box Internal error: Dialog 108 failed: err=*",
        "box Internal error: Failed to set up toolbar 107",
        "box Internal error: Failed to set up toolbar 115",
        "box Orvande Online: A problem occured communicating with the server",
        "box Orvande Online: You must provide a user name and password to access your account.",
        "box Orvande Online: Problem communicating over the internet",
        "box Orvande Online: Internal server error",
        "box Orvande Online: The passwords do not match",
    };
}
