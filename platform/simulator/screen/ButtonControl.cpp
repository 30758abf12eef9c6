/* Buttons, check boxes and radio buttons. */
#include "Platform.h"

#include "machine/Allocations.h"
#include "screen/Controls.h"

namespace simulator {

namespace {

void ChangeCheck(ButtonControl& button) {
    switch (button.Type()) {
        case BS_AUTOCHECKBOX:
            button.check = button.check == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
            break;
        case BS_AUTO3STATE:
            button.check = (button.check + 1) % (BST_INDETERMINATE + 1);
            break;
        case BS_AUTORADIOBUTTON:
            button.check = BST_CHECKED;
            break;
        default:
            break;
    }
}

void Click(ButtonControl& button) {
    ChangeCheck(button);
    NotifyContainer(button, BN_CLICKED);
}

void Press(ButtonControl& button) {
    button.isDown = true;
    Screen::Current().SetFocus(button.handle);
}

void Release(ButtonControl& button) {
    if (!button.isDown) return;
    button.isDown = false;
    Click(button);
}

LRESULT DialogCode(const ButtonControl& button) {
    if (button.Type() == BS_DEFPUSHBUTTON) return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    if (button.IsPushButton()) return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    return button.Type() == BS_GROUPBOX ? DLGC_STATIC : DLGC_BUTTON;
}

}  // namespace

bool ButtonControl::IsCheckable() const {
    return !IsPushButton() && Type() != BS_GROUPBOX && Type() != BS_OWNERDRAW;
}

LRESULT WINAPI ButtonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const OwnWork ownWork;
    auto* const button = Screen::Current().Lookup<ButtonControl>(handle);
    if (button == nullptr) return 0;
    switch (message) {
        case BM_GETCHECK:
            return static_cast<LRESULT>(button->check);
        case BM_SETCHECK:
            if (button->IsCheckable() && wParam <= BST_INDETERMINATE) button->check = wParam;
            return 0;
        case BM_GETSTATE:
            return static_cast<LRESULT>(button->check) | (button->isDown ? BST_PUSHED : 0);
        case BM_CLICK:
            Screen::Current().Deliver(handle, WM_LBUTTONDOWN, 0, 0);
            Screen::Current().Deliver(handle, WM_LBUTTONUP, 0, 0);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            Press(*button);
            return 0;
        case WM_LBUTTONUP:
            Release(*button);
            return 0;
        case WM_CHAR:
            if (wParam == u' ') Click(*button);
            return 0;
        case WM_GETDLGCODE:
            return DialogCode(*button);
        default:
            return DefWindowProcW(handle, message, wParam, lParam);
    }
}

}  // namespace simulator
