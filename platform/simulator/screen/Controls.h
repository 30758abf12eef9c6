#pragma once

#include "Platform.h"

#include <memory>
#include <string>

#include "screen/Screen.h"

namespace simulator {

struct EditControl : Window {
    using Window::Window;

    /* What the user sees: in a password field one password character for each unit. */
    std::u16string ShownText() const;

    bool IsPassword() const { return passwordCharacter != 0; }
    bool IsReadOnly() const { return (style & ES_READONLY) != 0; }

    size_t limit = 30000;  // of what can be typed
    char16_t passwordCharacter = 0;
    size_t selectionStart = 0;
    size_t selectionEnd = 0;  // the insertion point
};

struct ButtonControl : Window {
    using Window::Window;

    UINT Type() const { return style & BS_TYPEMASK; }
    bool IsPushButton() const { return Type() == BS_PUSHBUTTON || Type() == BS_DEFPUSHBUTTON; }

    /* Check boxes and radio buttons. */
    bool IsCheckable() const;

    WPARAM check = BST_UNCHECKED;
    bool isDown = false;
};

struct StaticControl : Window {
    using Window::Window;
};

/* A control of the class "static", "edit" or "button", whatever the case, not yet on the screen; null for
 * other classes. Its style is to be set before it gets there. */
std::unique_ptr<Window> NewControl(const std::u16string& className, bool isTopLevel);

/* What follows from a control's style, once that is set. */
void PrepareControl(Window& window);

/* Reports to the containing window what happened in a control. */
void NotifyContainer(const Window& control, WORD code);

LRESULT WINAPI EditProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI ButtonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT WINAPI StaticProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace simulator
