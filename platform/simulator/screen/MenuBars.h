#pragma once

#include "Platform.h"

#include <map>
#include <string>
#include <vector>

#include "screen/Screen.h"

namespace simulator {

struct BarButton {
    int image = 0;
    int command = 0;
    BYTE state = 0;
    BYTE style = 0;
    std::u16string text;
    HMENU menu = nullptr;  // what it drops down
    DWORD_PTR data = 0;
};

/* The menu bar of a dialog: a tool bar that the dialog owns. */
struct BarWindow : Window {
    BarWindow() : Window("bar") {}

    std::vector<BarButton> buttons;
    HMENU menu = nullptr;
    std::map<WPARAM, WORD> keys;  // the flags of the keys that are overridden
};

/* The menu bar that a dialog owns, or null. */
BarWindow* BarOf(const Window& dialog);

LRESULT WINAPI BarProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace simulator
