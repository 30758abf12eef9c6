/* What the rows of dialogs share: what users do in them, and what may come of failures. */
#pragma once

#include "DialogScripts.h"
#include "Flow.h"

/* Types user ID and password, and presses the first soft key; twice, should it be needed. */
void SignInAsAnna(DialogUser& user);

/* The same in the dialog for a new account. */
void CreateAnna(DialogUser& user);

/* Presses Done; twice, should it be needed. */
void PressDone(DialogUser& user);

/* Gives up. */
void Leave(DialogUser& user);

/* What may come of failures in a dialog, whatever its user wants there. */
struct DialogOutcomes {
    std::string_view success;
    std::string_view notShown;  // a call failed without which it cannot be shown; or
    std::string_view withoutMemory;
    std::string_view destroyed;  // it takes no command any more, or cannot be ended, until it is destroyed
};
std::vector<Statement> StatementsOf(const DialogOutcomes& outcomes);

/* The same with what is allowed besides. */
std::vector<Statement> With(std::vector<Statement> statements, const std::vector<Statement>& others);

/* The boxes of the library's own dialogs. */
std::vector<std::string_view> AccountBoxes();

/* Of a window that exists, GetWindowLongPtrW does not fail. If it did, the window procedure would find its
 * window unbound, and that ends the process. */
extern const std::vector<std::string_view> callsThatDoNotFail;
