/* The messages of a menu bar. */
#include "Platform.h"

#include <algorithm>
#include <cstring>

#include "machine/Allocations.h"
#include "machine/Text.h"
#include "screen/MenuBars.h"
#include "screen/Menus.h"

namespace simulator {

namespace {

/* The button's index; -1 when there is none. */
LRESULT IndexOf(const BarWindow& bar, WPARAM commandOrIndex, bool isIndex) {
    const auto number = static_cast<int>(commandOrIndex);
    if (isIndex) return number >= 0 && static_cast<size_t>(number) < bar.buttons.size() ? number : -1;
    for (size_t index = 0; index < bar.buttons.size(); ++index) {
        if (bar.buttons[index].command == number) return static_cast<LRESULT>(index);
    }
    return -1;
}

LRESULT GetButton(const BarWindow& bar, WPARAM index, TBBUTTON* result) {
    if (index >= bar.buttons.size() || result == nullptr) return FALSE;
    const BarButton& button = bar.buttons[index];
    *result = {};
    result->iBitmap = button.image;
    result->idCommand = button.command;
    result->fsState = button.state;
    result->fsStyle = button.style;
    result->dwData = button.data;
    result->iString = -1;
    return TRUE;
}

LRESULT GetButtonInfo(const BarWindow& bar, WPARAM wParam, TBBUTTONINFOW* info) {
    if (info == nullptr || info->cbSize != sizeof *info) return -1;
    const LRESULT index = IndexOf(bar, wParam, (info->dwMask & TBIF_BYINDEX) != 0);
    if (index < 0) return -1;
    const BarButton& button = bar.buttons[static_cast<size_t>(index)];
    if ((info->dwMask & TBIF_COMMAND) != 0) info->idCommand = button.command;
    if ((info->dwMask & TBIF_IMAGE) != 0) info->iImage = button.image;
    if ((info->dwMask & TBIF_STATE) != 0) info->fsState = button.state;
    if ((info->dwMask & TBIF_STYLE) != 0) info->fsStyle = button.style;
    if ((info->dwMask & TBIF_LPARAM) != 0) info->lParam = button.data;
    if ((info->dwMask & TBIF_TEXT) != 0 && info->pszText != nullptr && info->cchText > 0) {
        const size_t length = std::min(button.text.size(), static_cast<size_t>(info->cchText) - 1);
        std::memcpy(info->pszText, button.text.data(), length * sizeof(WCHAR));
        info->pszText[length] = 0;
    }
    return index;
}

// A button's command stays what it is, as a handheld's menu bar has it.
LRESULT SetButtonInfo(BarWindow& bar, WPARAM wParam, const TBBUTTONINFOW* info) {
    if (info == nullptr || info->cbSize != sizeof *info) return FALSE;
    const LRESULT index = IndexOf(bar, wParam, (info->dwMask & TBIF_BYINDEX) != 0);
    if (index < 0) return FALSE;
    BarButton& button = bar.buttons[static_cast<size_t>(index)];
    if ((info->dwMask & TBIF_IMAGE) != 0) button.image = info->iImage;
    if ((info->dwMask & TBIF_STATE) != 0) button.state = info->fsState;
    if ((info->dwMask & TBIF_STYLE) != 0) button.style = info->fsStyle;
    if ((info->dwMask & TBIF_LPARAM) != 0) button.data = info->lParam;
    if ((info->dwMask & TBIF_TEXT) != 0) button.text = TextOrEmpty(info->pszText);
    return TRUE;
}

LRESULT EnableButton(BarWindow& bar, WPARAM command, bool enable) {
    const LRESULT index = IndexOf(bar, command, false);
    if (index < 0) return FALSE;
    BYTE& state = bar.buttons[static_cast<size_t>(index)].state;
    state = static_cast<BYTE>(enable ? state | TBSTATE_ENABLED : state & ~TBSTATE_ENABLED);
    return TRUE;
}

LRESULT IsButtonEnabled(const BarWindow& bar, WPARAM command) {
    const LRESULT index = IndexOf(bar, command, false);
    if (index < 0) return -1;
    return (bar.buttons[static_cast<size_t>(index)].state & TBSTATE_ENABLED) != 0;
}

/* Changes those of a key's flags that the mask in the low half of lParam names to those in the high half. */
LRESULT OverrideKey(BarWindow& bar, WPARAM key, LPARAM lParam) {
    const WORD mask = LOWORD(lParam);
    WORD& flags = bar.keys[key];
    flags = static_cast<WORD>((flags & ~mask) | (HIWORD(lParam) & mask));
    return TRUE;
}

}  // namespace

LRESULT WINAPI BarProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const OwnWork ownWork;
    auto* const bar = Screen::Current().Lookup<BarWindow>(handle);
    if (bar == nullptr) return 0;
    switch (message) {
        case TB_BUTTONCOUNT:
            return static_cast<LRESULT>(bar->buttons.size());
        case TB_GETBUTTON:
            return GetButton(*bar, wParam, reinterpret_cast<TBBUTTON*>(lParam));
        case TB_GETBUTTONINFOW:
            return GetButtonInfo(*bar, wParam, reinterpret_cast<TBBUTTONINFOW*>(lParam));
        case TB_SETBUTTONINFOW:
            return SetButtonInfo(*bar, wParam, reinterpret_cast<const TBBUTTONINFOW*>(lParam));
        case TB_ENABLEBUTTON:
            return EnableButton(*bar, wParam, LOWORD(lParam) != 0);
        case TB_ISBUTTONENABLED:
            return IsButtonEnabled(*bar, wParam);
        case TB_COMMANDTOINDEX:
            return IndexOf(*bar, wParam, false);
        case SHCMBM_GETMENU:
            return reinterpret_cast<LRESULT>(bar->menu);
        case SHCMBM_OVERRIDEKEY:
            return OverrideKey(*bar, wParam, lParam);
        case WM_NCDESTROY:
            DestroyMenuTree(bar->menu);
            return 0;
        default:
            return DefWindowProcW(handle, message, wParam, lParam);
    }
}

}  // namespace simulator
