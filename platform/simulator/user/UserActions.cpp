#include "user/UserActions.h"

#include "machine/Violations.h"

namespace simulator {

void UserViolates(HWND dialog, const std::string& what) {
    Violate("the user of " + WindowName(dialog) + ": " + what);
}

DialogWindow* OpenDialog(HWND handle) {
    auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle);
    if (dialog != nullptr && dialog->IsRunning()) return dialog;
    UserViolates(handle, "the dialog is closed");
    return nullptr;
}

DialogWindow* ReachableDialog(HWND handle) {
    DialogWindow* const dialog = OpenDialog(handle);
    if (dialog == nullptr || Screen::Current().IsReachable(*dialog)) return dialog;
    UserViolates(handle, "the dialog waits for another one");
    return nullptr;
}

void Deliver(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Screen::Current().Deliver(handle, message, wParam, lParam);
    DeliverAllPosted();
}

void DeliverAllPosted() {
    while (Screen::Current().DeliverPosted()) {
    }
}

}  // namespace simulator
