/* A test of what the user does in a dialog. */
#pragma once

#include "DialogTest.h"

class Users : public DialogTest {
protected:
    /* Shows template 100 with that menu bar (0: none) and does that in it. */
    void InDialog(UINT bar, const DialogScript& script) {
        if (bar != 0) dialog.HasBar(bar);
        User([&](DialogUser& user) {
            dialog.commands.clear();
            script(user);
            if (user.IsOpen()) Cancel(user);
        });
        result = dialog.Run();
    }

    /* The one violation that there was, without the words before it. */
    static std::string Complaint() {
        const Lines violations = TakeViolations();
        const std::string before = "the user of dialog 1: ";
        if (violations.size() != 1) return std::to_string(violations.size()) + " violations";
        return violations[0].starts_with(before) ? violations[0].substr(before.size()) : violations[0];
    }

    SampleDialog dialog;
    INT_PTR result = 0;
};
