/* The making of dialogs. */
#include "Platform.h"

#include "screen/Dialogs.h"

#include <algorithm>
#include <utility>

#include "screen/Controls.h"

namespace simulator {

namespace {

// What a dialog unit of the handheld's font has in pixels, times 4 and 8.
constexpr int unitWidth = 6;
constexpr int unitHeight = 13;

template <class Part>
RECT PlaceOf(const Part& part) {
    const int left = part.x * unitWidth / 4;
    const int top = part.y * unitHeight / 8;
    return {left, top, left + part.width * unitWidth / 4, top + part.height * unitHeight / 8};
}

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

}  // namespace

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

}  // namespace simulator
