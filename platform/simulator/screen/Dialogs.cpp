/* Modal dialogs. */
#include "Platform.h"

#include "screen/Dialogs.h"

#include <algorithm>
#include <utility>

#include "Device.h"
#include "machine/Call.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "modules/Modules.h"
#include "modules/Resources.h"
#include "screen/Controls.h"
#include "screen/DialogTemplate.h"
#include "user/Scripts.h"
#include "user/ShownDialog.h"

namespace simulator {

namespace {

// What a dialog unit of the handheld's font has in pixels, times 4 and 8.
constexpr int unitWidth = 6;
constexpr int unitHeight = 13;

struct Dialogs {
    std::vector<HWND> running;  // modal ones, the innermost last
    std::vector<ShownDialog> shown;
};

Dialogs& Current() {
    static Dialogs& dialogs = *new Dialogs;
    return dialogs;
}

template <class Part>
RECT PlaceOf(const Part& part) {
    const int left = part.x * unitWidth / 4;
    const int top = part.y * unitHeight / 8;
    return {left, top, left + part.width * unitWidth / 4, top + part.height * unitHeight / 8};
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

std::unique_ptr<DialogWindow> NewDialog(const DialogTemplate& source, HINSTANCE instance, HWND owner,
                                        DLGPROC procedure) {
    auto dialog = std::make_unique<DialogWindow>();
    dialog->className = u"dialog";
    dialog->procedure = DefDlgProcW;
    dialog->dialogProcedure = procedure;
    dialog->instance = instance;
    dialog->owner = owner;
    dialog->style = source.style & ~DWORD{WS_VISIBLE};
    dialog->extendedStyle = source.extendedStyle;
    dialog->text = source.caption;
    dialog->place = PlaceOf(source);
    return dialog;
}

/* False when the control's class is unknown. */
bool AddControl(HWND dialog, const TemplateControl& source, HINSTANCE instance) {
    auto control = NewControl(source.className, false);
    if (control == nullptr) return false;
    control->container = dialog;
    control->instance = instance;
    control->style = source.style | WS_CHILD;
    control->extendedStyle = source.extendedStyle;
    control->id = source.id;
    control->text = source.text;
    control->place = PlaceOf(source);
    PrepareControl(*control);
    if (const auto* const button = dynamic_cast<ButtonControl*>(control.get());
        button != nullptr && button->Type() == BS_DEFPUSHBUTTON) {
        Screen::Current().Lookup<DialogWindow>(dialog)->defaultButton = button->id;
    }
    Screen::Current().Add(std::move(control));
    return true;
}

/* The controls of the template; false when one cannot be made. */
bool AddControls(HWND dialog, const DialogTemplate& source, HINSTANCE instance) {
    const bool isForgiving = (source.style & DS_NOFAILCREATE) != 0;
    return std::all_of(source.controls.begin(), source.controls.end(), [&](const TemplateControl& control) {
        return AddControl(dialog, control, instance) || isForgiving;
    });
}

void Initialise(HWND handle, LPARAM parameter) {
    Screen& screen = Screen::Current();
    const auto* dialog = screen.Lookup<DialogWindow>(handle);
    const HWND first = NextTabStop(*dialog, nullptr, false);
    const LRESULT setsFocus =
        screen.Deliver(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), parameter);
    dialog = screen.Lookup<DialogWindow>(handle);
    if (dialog == nullptr || setsFocus == 0) return;
    // The procedure may have changed which controls are there.
    FocusByTab(NextTabStop(*dialog, nullptr, false));
}

/* Makes the dialog's window; null with `error` when that fails, and when it is destroyed on the way. */
HWND CreateDialogWindow(const DialogTemplate& source, HINSTANCE instance, HWND owner, DLGPROC procedure,
                        LPARAM parameter, DWORD& error) {
    Screen& screen = Screen::Current();
    error = ERROR_CANNOT_FIND_WND_CLASS;
    if (source.hasOwnClass) return nullptr;
    const HWND handle = screen.Add(NewDialog(source, instance, owner, procedure));
    if ((source.style & DS_SETFONT) != 0) screen.Deliver(handle, WM_SETFONT, 0, 0);
    if (!AddControls(handle, source, instance)) {
        screen.Destroy(handle);
        return nullptr;
    }
    Initialise(handle, parameter);
    error = ERROR_INVALID_WINDOW_HANDLE;
    return screen.Lookup(handle) != nullptr ? handle : nullptr;
}

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

void RunLoop(HWND handle) {
    while (IsRunning(handle)) {
        if (Screen::Current().DeliverPosted() || RunNextScript(handle)) continue;
        Violate("the user has no script for " + WindowName(handle));
        EndRunningDialog(*Screen::Current().Lookup<DialogWindow>(handle), IDCANCEL);
    }
}

/* Runs a dialog to its end; its result. One that was destroyed instead of ended gives 0. */
INT_PTR RunModal(HWND handle) {
    auto& dialogs = Current();
    dialogs.running.push_back(handle);
    const size_t record = dialogs.shown.size();
    if (IsRunning(handle)) Show(handle);
    if (const auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle))
        dialogs.shown.push_back(Look(*dialog));
    RunLoop(handle);
    const auto* const dialog = Screen::Current().Lookup<DialogWindow>(handle);
    const INT_PTR result = dialog != nullptr ? dialog->result : 0;
    std::erase(dialogs.running, handle);
    if (record < dialogs.shown.size()) dialogs.shown[record].result = result;
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

HWND InnermostDialog() {
    const auto& running = Current().running;
    return running.empty() ? nullptr : running.back();
}

void EndRunningDialog(DialogWindow& dialog, INT_PTR result) {
    dialog.hasEnded = true;
    dialog.result = result;
    dialog.style &= ~DWORD{WS_VISIBLE};
}

void ResetDialogs() {
    Current() = Dialogs{};
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

const std::vector<ShownDialog>& Device::Dialogs() const {
    return simulator::Current().shown;
}
