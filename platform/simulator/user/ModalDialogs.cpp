/* Modal dialogs, which run as long as their user goes on. */
#include "Platform.h"

#include "user/ModalDialogs.h"

#include <utility>

#include "machine/Call.h"
#include "machine/Violations.h"
#include "modules/Modules.h"
#include "modules/Resources.h"
#include "screen/Dialogs.h"
#include "user/DeviceUser.h"
#include "user/Look.h"
#include "user/Scripts.h"

namespace simulator {

namespace {

std::vector<ShownDialog>& Shown() {
    static auto& dialogs = *new std::vector<ShownDialog>;
    return dialogs;
}

/* Disables a dialog's owner while it exists, unless something else already does. */
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner) : owner_(owner) {
        Window* const window = Screen::Current().Lookup(owner);
        isOurs_ = window != nullptr && window->IsEnabled();
        if (isOurs_) Enable(false);
    }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;
    ~DisabledOwner() {
        if (isOurs_) Enable(true);
    }

private:
    void Enable(bool enable) const {
        Window* const window = Screen::Current().Lookup(owner_);
        if (window == nullptr || window->IsEnabled() == enable) return;
        window->style ^= WS_DISABLED;
        Screen::Current().Deliver(owner_, WM_ENABLE, enable ? 1 : 0, 0);
    }

    HWND owner_;
    bool isOurs_ = false;
};

bool IsRunning(HWND handle) {
    const auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle);
    return dialog != nullptr && dialog->IsRunning();
}

void Show(HWND handle) {
    Screen& screen = Screen::Current();
    screen.Lookup(handle)->style |= WS_VISIBLE;
    screen.Deliver(handle, WM_SHOWWINDOW, TRUE, 0);
    screen.Deliver(handle, WM_PAINT, 0, 0);
}

/* Ends a dialog as EndDialog does. */
void EndRunningDialog(DialogWindow& dialog, INT_PTR result) {
    dialog.hasEnded = true;
    dialog.result = result;
    dialog.style &= ~DWORD{WS_VISIBLE};
}

void RunLoop(HWND handle) {
    while (IsRunning(handle)) {
        if (Screen::Current().DeliverPosted() || RunNextScript(handle)) continue;
        Violate("the user has no script for " + WindowName(handle));
        EndRunningDialog(*Screen::Current().Lookup<DialogWindow>(handle), IDCANCEL);
    }
}

/* Runs a dialog to its end; its result. One that was destroyed instead of ended gives 0. */
INT_PTR RunModal(HWND handle) {
    const size_t record = Shown().size();
    if (IsRunning(handle)) Show(handle);
    if (const auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle))
        Shown().push_back(Look(*dialog));
    RunLoop(handle);
    const auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle);
    const INT_PTR result = dialog != nullptr ? dialog->result : 0;
    if (record < Shown().size()) Shown()[record].result = result;
    return result;
}

/* The template at that address: nothing when it is damaged. */
std::optional<DialogTemplate> TemplateAt(LPCDLGTEMPLATEW address, const Call& call) {
    const Resource* const resource = ResourceAt(address);
    if (resource == nullptr) {
        call.Violates("the template is no loaded resource");
        return std::nullopt;
    }
    return ParseDialogTemplate(resource->bytes);
}

std::string TemplateName(LPCDLGTEMPLATEW address) {
    if (address == nullptr) return "null";
    const Resource* const resource = ResourceAt(address);
    return "template " + (resource != nullptr ? ResourceText(resource->name) : "unknown");
}

}  // namespace

void ResetDialogs() {
    Shown().clear();
}

}  // namespace simulator

using simulator::Call;
using simulator::DialogWindow;
using simulator::Screen;

INT_PTR WINAPI DialogBoxIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW source, HWND owner,
                                       DLGPROC procedure, LPARAM parameter) {
    Call call("DialogBoxIndirectParamW");
    call.Arguments({simulator::ModuleName(instance), simulator::TemplateName(source),
                    simulator::WindowName(owner), procedure != nullptr ? "procedure" : "null",
                    parameter != 0 ? "parameter" : "0"});
    const auto fails = [&](DWORD error) { return call.Fails(INT_PTR{-1}, "-1", error); };
    if (call.MustFail()) return fails(call.OrderedError());
    // The error of what did not find the template stays.
    if (source == nullptr) return fails(GetLastError());
    const simulator::Window* const ownerWindow = Screen::Current().Find(owner, call);
    if (owner != nullptr && ownerWindow == nullptr) return fails(ERROR_INVALID_WINDOW_HANDLE);
    const auto dialogTemplate = simulator::TemplateAt(source, call);
    if (!dialogTemplate) return fails(ERROR_INVALID_DATA);
    const HWND topLevel =
        ownerWindow != nullptr ? Screen::Current().TopLevelOf(*ownerWindow).handle : nullptr;
    const HWND focus = Screen::Current().Focus();
    DWORD error = ERROR_SUCCESS;
    HWND dialog = nullptr;
    std::string outcome;
    INT_PTR result = -1;
    {
        const simulator::DisabledOwner disabledOwner(topLevel);
        dialog =
            simulator::CreateDialogWindow(*dialogTemplate, instance, topLevel, procedure, parameter, error);
        if (dialog == nullptr) return fails(error);
        outcome = ", " + simulator::WindowName(dialog);
        result = simulator::RunModal(dialog);
    }
    Screen::Current().Destroy(dialog);
    if (Screen::Current().Lookup(focus) != nullptr) Screen::Current().SetFocus(focus);
    return call.Returns(result, std::to_string(result) + outcome);
}

BOOL WINAPI EndDialog(HWND handle, INT_PTR result) {
    Call call("EndDialog");
    call.Arguments({simulator::WindowName(handle), std::to_string(result)});
    if (call.MustFail()) return call.False(call.OrderedError());
    auto* const dialog = dynamic_cast<DialogWindow*>(Screen::Current().Find(handle, call));
    // Of another window it is no mistake: a window procedure need not know what it serves.
    if (dialog == nullptr) return call.False(ERROR_INVALID_WINDOW_HANDLE);
    simulator::EndRunningDialog(*dialog, result);
    return call.True();
}

const std::vector<ShownDialog>& DeviceUser::Dialogs() const {
    return simulator::Shown();
}
