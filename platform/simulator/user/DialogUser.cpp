/* The user of a dialog: what he does with its controls. */
#include "Platform.h"

#include "user/DialogUser.h"

#include <algorithm>

#include "machine/Allocations.h"
#include "screen/Controls.h"
#include "user/Look.h"
#include "user/UserActions.h"

namespace simulator {

namespace {

std::string NameOf(int id) {
    return "control " + std::to_string(id);
}

/* The control of that id; a violation when there is none. */
Window* ControlOf(HWND handle, int id) {
    const DialogWindow* const dialog = OpenDialog(handle);
    if (dialog == nullptr) return nullptr;
    for (const HWND child : dialog->childWindows) {
        Window* const control = Screen::Current().Lookup(child);
        if (control != nullptr && control->id == id) return control;
    }
    UserViolates(handle, "there is no " + NameOf(id));
    return nullptr;
}

/* The control of that id and type when the user can use it, otherwise null and a violation. */
template <class Type = Window>
Type* UsableControl(HWND handle, int id) {
    if (ReachableDialog(handle) == nullptr) return nullptr;
    Window* const control = ControlOf(handle, id);
    if (control == nullptr) return nullptr;
    auto* const typed = dynamic_cast<Type*>(control);
    if (typed == nullptr) {
        UserViolates(handle, NameOf(id) + " is of another kind");
    } else if (!control->IsVisible()) {
        UserViolates(handle, NameOf(id) + " is hidden");
    } else if (!control->IsEnabled()) {
        UserViolates(handle, NameOf(id) + " is disabled");
    } else {
        return typed;
    }
    return nullptr;
}

LPARAM MiddleOf(const Window& control) {
    const RECT& place = control.place;
    return MAKELPARAM((place.right - place.left) / 2, (place.bottom - place.top) / 2);
}

/* Taps a control where it lets itself be tapped: what lies on a static without notifications goes to the
 * dialog. */
void TapOn(const Window& control, UINT down) {
    const bool isTransparent =
        dynamic_cast<const StaticControl*>(&control) != nullptr && (control.style & SS_NOTIFY) == 0;
    const HWND target = isTransparent ? control.container : control.handle;
    LPARAM place = MiddleOf(control);
    if (isTransparent)
        place = MAKELPARAM(LOWORD(place) + control.place.left, HIWORD(place) + control.place.top);
    Deliver(target, down, MK_LBUTTON, place);
    Deliver(target, WM_LBUTTONUP, 0, place);
}

void TypeUnits(HWND edit, std::u16string_view text) {
    for (const char16_t unit : text)
        Deliver(edit, WM_CHAR, unit, 1);
}

/* Whether a push button of the dialog was pressed by its id. */
void PressPushButton(HWND dialog, int id) {
    for (const HWND child : Screen::Current().Lookup(dialog)->childWindows) {
        const auto* const button = Screen::Current().Lookup<ButtonControl>(child);
        if (button == nullptr || button->id != id || !button->IsPushButton()) continue;
        if (button->IsEnabled()) Deliver(child, BM_CLICK, 0, 0);
        return;
    }
    Deliver(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
}

}  // namespace

}  // namespace simulator

using simulator::DialogWindow;
using simulator::OwnWork;
using simulator::Screen;

bool DialogUser::IsOpen() const {
    const auto* const dialog = Screen::Current().Lookup<DialogWindow>(dialog_);
    return dialog != nullptr && dialog->IsRunning();
}

std::u16string DialogUser::Caption() const {
    return Look().caption;
}

ShownDialog DialogUser::Look() const {
    const OwnWork ownWork;
    const DialogWindow* const dialog = simulator::OpenDialog(dialog_);
    return dialog != nullptr ? simulator::Look(*dialog) : ShownDialog{};
}

ShownControl DialogUser::Control(int id) const {
    const OwnWork ownWork;
    const simulator::Window* const control = simulator::ControlOf(dialog_, id);
    if (control == nullptr) return {};
    if (control->IsVisible()) return simulator::Look(*control);
    simulator::UserViolates(dialog_, simulator::NameOf(id) + " is hidden");
    return {};
}

std::vector<std::u16string> DialogUser::Statics() const {
    const OwnWork ownWork;
    std::vector<std::u16string> texts;
    for (const ShownControl& control : Look().controls) {
        if (control.className == u"static" && control.isVisible) texts.push_back(control.text);
    }
    return texts;
}

std::optional<int> DialogUser::Focus() const {
    const OwnWork ownWork;
    const std::vector<ShownControl> controls = Look().controls;
    const auto found =
        std::find_if(controls.begin(), controls.end(), [](const auto& control) { return control.hasFocus; });
    return found != controls.end() ? std::optional(found->id) : std::nullopt;
}

std::vector<ShownButton> DialogUser::MenuBar() const {
    return Look().menuBar;
}

void DialogUser::Type(int id, std::u16string_view text) {
    const OwnWork ownWork;
    const auto* const edit = simulator::UsableControl<simulator::EditControl>(dialog_, id);
    if (edit == nullptr) return;
    if (edit->IsReadOnly()) {
        simulator::UserViolates(dialog_, simulator::NameOf(id) + " is read-only");
        return;
    }
    const HWND handle = edit->handle;
    simulator::TapOn(*edit, WM_LBUTTONDOWN);
    Screen::Current().Deliver(handle, EM_SETSEL, 0, -1);
    if (text.empty()) simulator::Deliver(handle, WM_CHAR, VK_BACK, 1);
    simulator::TypeUnits(handle, text);
}

void DialogUser::TypeOn(std::u16string_view text) {
    const OwnWork ownWork;
    if (simulator::ReachableDialog(dialog_) == nullptr) return;
    const auto* const edit = Screen::Current().Lookup<simulator::EditControl>(Screen::Current().Focus());
    if (edit == nullptr || edit->container != dialog_ || edit->IsReadOnly()) {
        simulator::UserViolates(dialog_, "nothing that can be typed into has the focus");
        return;
    }
    simulator::TypeUnits(edit->handle, text);
}

void DialogUser::Check(int id, bool ticked) {
    const OwnWork ownWork;
    const auto* const button = simulator::UsableControl<simulator::ButtonControl>(dialog_, id);
    if (button == nullptr) return;
    if (!button->IsCheckable()) {
        simulator::UserViolates(dialog_, simulator::NameOf(id) + " is of another kind");
        return;
    }
    if ((button->check == BST_CHECKED) != ticked) simulator::TapOn(*button, WM_LBUTTONDOWN);
}

void DialogUser::Tap(int id) {
    const OwnWork ownWork;
    if (const auto* const control = simulator::UsableControl(dialog_, id))
        simulator::TapOn(*control, WM_LBUTTONDOWN);
}

void DialogUser::DoubleTap(int id) {
    const OwnWork ownWork;
    Tap(id);
    if (!IsOpen()) return;
    if (const auto* const control = simulator::UsableControl(dialog_, id))
        simulator::TapOn(*control, WM_LBUTTONDBLCLK);
}

void DialogUser::TapAt(int x, int y) {
    const OwnWork ownWork;
    if (simulator::ReachableDialog(dialog_) == nullptr) return;
    simulator::Deliver(dialog_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    simulator::Deliver(dialog_, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void DialogUser::PressEnter() {
    const OwnWork ownWork;
    if (simulator::ReachableDialog(dialog_) == nullptr) return;
    const HWND focus = Screen::Current().Focus();
    const auto* const edit = Screen::Current().Lookup<simulator::EditControl>(focus);
    if (edit != nullptr && (edit->style & ES_WANTRETURN) != 0) {
        simulator::Deliver(focus, WM_CHAR, VK_RETURN, 1);
        return;
    }
    const auto* const button = Screen::Current().Lookup<simulator::ButtonControl>(focus);
    if (button != nullptr && button->container == dialog_ && button->IsPushButton()) {
        simulator::Deliver(focus, BM_CLICK, 0, 0);
        return;
    }
    const LRESULT defaultButton = Screen::Current().Deliver(dialog_, DM_GETDEFID, 0, 0);
    simulator::PressPushButton(dialog_, HIWORD(defaultButton) == DC_HASDEFID ? LOWORD(defaultButton) : IDOK);
}

void DialogUser::PressTab(bool backwards) {
    const OwnWork ownWork;
    const DialogWindow* const dialog = simulator::ReachableDialog(dialog_);
    if (dialog == nullptr) return;
    simulator::FocusByTab(simulator::NextTabStop(*dialog, Screen::Current().Focus(), backwards));
    simulator::DeliverAllPosted();
}

LRESULT DialogUser::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    const OwnWork ownWork;
    if (simulator::OpenDialog(dialog_) == nullptr) return 0;
    const LRESULT result = Screen::Current().Deliver(dialog_, message, wParam, lParam);
    simulator::DeliverAllPosted();
    return result;
}

LRESULT DialogUser::SendTo(int id, UINT message, WPARAM wParam, LPARAM lParam) {
    const OwnWork ownWork;
    const simulator::Window* const control = simulator::ControlOf(dialog_, id);
    if (control == nullptr) return 0;
    const LRESULT result = Screen::Current().Deliver(control->handle, message, wParam, lParam);
    simulator::DeliverAllPosted();
    return result;
}

LRESULT DialogUser::Notify(int id, UINT code) {
    const OwnWork ownWork;
    const simulator::Window* const control = simulator::ControlOf(dialog_, id);
    if (control == nullptr) return 0;
    NMHDR header{control->handle, static_cast<UINT_PTR>(id), code};
    return Send(WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&header));
}

void DialogUser::Timer(UINT_PTR id) {
    Send(WM_TIMER, static_cast<WPARAM>(id), 0);
}
