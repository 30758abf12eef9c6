#include "HandheldBox.h"

#include <algorithm>

#include "helpers/WindowContents.h"

namespace {

constexpr int textControl = 0xFFFF;
constexpr int margin = 8; /* pixels */

RECT ClientPlaceOf(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

/* How high the control's text is when it is broken into lines of that width. */
int HeightOfText(HWND control, int width) {
    const HDC context = GetDC(control);
    SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT place{0, 0, width, 0};
    DrawTextW(context, TextOf(control).c_str(), -1, &place, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    ReleaseDC(control, context);
    return place.bottom;
}

/* The control with the icon, or null. */
HWND IconControlOf(HWND box) {
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (SendMessageW(child, STM_GETICON, 0, 0) != 0) return child;
    }
    return nullptr;
}

int WidthOf(const RECT& place) {
    return place.right - place.left;
}

int HeightOf(const RECT& place) {
    return place.bottom - place.top;
}

void Move(HWND window, int x, int y, int width, int height) {
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

/* Icon and text side by side, the button below them; returns the box's height. `icon` may be null. */
int LayOut(HWND box, HWND icon) {
    RECT outer{};
    RECT inner{};
    GetWindowRect(box, &outer);
    GetClientRect(box, &inner);
    const int screenWidth = GetSystemMetrics(SM_CXSCREEN);
    const int width = screenWidth - (WidthOf(outer) - WidthOf(inner));

    const int side = icon ? WidthOf(ClientPlaceOf(icon)) : 0;
    const int left = icon ? margin + side + margin : margin;
    if (icon) Move(icon, margin, margin, side, side);

    const HWND text = GetDlgItem(box, textControl);
    const int textWidth = width - left - margin;
    const int textHeight = HeightOfText(text, textWidth);
    Move(text, left, margin + std::max(0, (side - textHeight) / 2), textWidth, textHeight);

    const HWND button = GetDlgItem(box, IDOK);
    const RECT place = ClientPlaceOf(button);
    const int top = margin + std::max(side, textHeight) + margin;
    Move(button, (width - WidthOf(place)) / 2, top, WidthOf(place), HeightOf(place));

    const int height = top + HeightOf(place) + margin + HeightOf(outer) - HeightOf(inner);
    Move(box, 0, std::max(0, (GetSystemMetrics(SM_CYSCREEN) - height) / 2), screenWidth, height);
    return height;
}

}  // namespace

void FitToScreen(HWND box) {
    const HWND icon = IconControlOf(box);
    if (LayOut(box, icon) > GetSystemMetrics(SM_CYSCREEN)) {
        ShowWindow(icon, SW_HIDE);
        LayOut(box, nullptr);
    }
    RedrawWindow(box, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
