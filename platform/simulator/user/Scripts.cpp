/* The scripts of the user. */
#include "Platform.h"

#include "user/Scripts.h"

#include <deque>
#include <string>
#include <utility>

#include "machine/Violations.h"
#include "screen/Screen.h"
#include "user/DeviceUser.h"

namespace simulator {

namespace {

std::deque<DialogScript>& Scripts() {
    static auto& scripts = *new std::deque<DialogScript>;
    return scripts;
}

}  // namespace

bool RunNextScript(HWND dialog) {
    if (Scripts().empty()) return false;
    const DialogScript script = std::move(Scripts().front());
    Scripts().pop_front();
    DialogUser user(dialog);
    try {
        script(user);
    } catch (...) {
        Violate("an exception leaves a script for " + WindowName(dialog));
    }
    return true;
}

void ResetScripts() {
    Scripts().clear();
}

void ReportScripts() {
    if (Scripts().empty()) return;
    Violate(std::to_string(Scripts().size()) + " scripts for dialogs that were not shown");
}

}  // namespace simulator

void DeviceUser::UseDialog(DialogScript script) {
    simulator::Scripts().push_back(std::move(script));
}
