#include "ui/WindowTranslation.h"

#include <cstddef>
#include <iterator>

#include "ui/TranslationCatalogue.h"

namespace {

constexpr UINT mostItems = 256;

MENUITEMINFOW MenuItemInfo(UINT mask) {
    MENUITEMINFOW info{};
    // Without the last field, which the handheld's system does not know.
    info.cbSize = offsetof(MENUITEMINFOW, hbmpItem);
    info.fMask = mask;
    info.fType = MFT_STRING;
    return info;
}

bool HasItem(HMENU menu, UINT position) {
    MENUITEMINFOW info = MenuItemInfo(0);
    return GetMenuItemInfoW(menu, position, TRUE, &info) != FALSE;
}

UINT CountItems(HMENU menu) {
    UINT count = 0;
    while (count < mostItems && HasItem(menu, count))
        ++count;
    return count;
}

WideString ItemText(HMENU menu, UINT position) {
    if (!HasItem(menu, 0)) return {};
    WCHAR text[100]{};
    MENUITEMINFOW info = MenuItemInfo(MIIM_TYPE);
    info.dwTypeData = text;
    info.cch = std::size(text);
    if (!GetMenuItemInfoW(menu, position, TRUE, &info)) return {};
    text[std::size(text) - 1] = 0;
    return text;
}

void TranslateItem(HMENU menu, UINT position) {
    const WideString text = ItemText(menu, position);
    if (text.empty()) return;
    WideString translated = translationCatalogue.Translate(text);
    if (translated == text) return;
    MENUITEMINFOW info = MenuItemInfo(MIIM_TYPE);
    info.dwTypeData = translated.data();
    SetMenuItemInfoW(menu, position, TRUE, &info);
}

TBBUTTONINFOW TextOfButton(WCHAR* text, int length) {
    TBBUTTONINFOW info{};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT | TBIF_COMMAND;
    info.pszText = text;
    info.cchText = length;
    return info;
}

void TranslateButton(HWND toolbar, int command) {
    WCHAR buffer[255]{};
    TBBUTTONINFOW info = TextOfButton(buffer, static_cast<int>(std::size(buffer)));
    const auto button = static_cast<WPARAM>(command);
    SendMessageW(toolbar, TB_GETBUTTONINFOW, button, reinterpret_cast<LPARAM>(&info));
    buffer[std::size(buffer) - 1] = 0;
    const WideString text = buffer;
    if (text.empty()) return;
    WideString translated = translationCatalogue.Translate(text);
    if (translated == text) return;
    // The mask names the command, but it is left 0: the menu bars of handhelds keep the button's own then.
    info = TextOfButton(translated.data(), static_cast<int>(translated.size()));
    SendMessageW(toolbar, TB_SETBUTTONINFOW, button, reinterpret_cast<LPARAM>(&info));
}

}  // namespace

BOOL TranslateWindowText(HWND window) {
    // Not cleared, which would take time for every control: the system writes the terminator.
    WCHAR buffer[5000];
    if (GetWindowTextW(window, buffer, static_cast<int>(std::size(buffer))) < 1) return TRUE;
    const WideString text = buffer;
    const WideString& translated = translationCatalogue.Translate(text);
    if (translated != text) SetWindowTextW(window, translated.c_str());
    return TRUE;
}

void TranslateWindowTree(HWND window) {
    TranslateWindowText(window);
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        TranslateWindowTree(child);
}

void TranslateMenu(HMENU menu) {
    const UINT count = CountItems(menu);
    for (UINT position = 0; position < count; ++position) {
        TranslateItem(menu, position);
        if (const HMENU subMenu = GetSubMenu(menu, static_cast<int>(position))) TranslateMenu(subMenu);
    }
}

void TranslateToolbar(HWND toolbar) {
    const LRESULT count = SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT index = 0; index < count; ++index) {
        TBBUTTON button{};
        SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        TranslateButton(toolbar, button.idCommand);
    }
}
