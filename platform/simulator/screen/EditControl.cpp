/* Edit fields. */
#include "Platform.h"

#include <algorithm>

#include "machine/Allocations.h"
#include "machine/Text.h"
#include "screen/Controls.h"

namespace simulator {

namespace {

constexpr WPARAM backspace = 8;
constexpr WPARAM firstPrintable = 0x20;
constexpr size_t noLimit = 0x7FFFFFFE;

void NotifyChange(HWND handle) {
    for (const WORD code : {WORD{EN_UPDATE}, WORD{EN_CHANGE}}) {
        const auto* const edit = Screen::Current().Lookup<EditControl>(handle);
        if (edit != nullptr) NotifyContainer(*edit, code);
    }
}

void PlaceInsertion(EditControl& edit, size_t position) {
    edit.selectionStart = edit.selectionEnd = position;
}

/* Puts text in place of the selection, as much of it as the limit allows. */
void Replace(EditControl& edit, std::u16string_view text) {
    const size_t start = std::min(edit.selectionStart, edit.selectionEnd);
    const size_t end = std::max(edit.selectionStart, edit.selectionEnd);
    const size_t kept = edit.text.size() - (end - start);
    const size_t room = edit.limit > kept ? edit.limit - kept : 0;
    const std::u16string_view fitting = text.substr(0, room);
    edit.text.replace(start, end - start, fitting);
    PlaceInsertion(edit, start + fitting.size());
    const HWND handle = edit.handle;
    if (fitting.size() < text.size()) NotifyContainer(edit, EN_MAXTEXT);
    NotifyChange(handle);
}

void DeleteBack(EditControl& edit) {
    if (edit.selectionStart == edit.selectionEnd) {
        if (edit.selectionEnd == 0) return;
        edit.selectionStart = edit.selectionEnd - 1;
    }
    Replace(edit, {});
}

void TypeUnit(EditControl& edit, WPARAM unit) {
    if (edit.IsReadOnly()) return;
    if (unit == backspace) {
        DeleteBack(edit);
    } else if (unit >= firstPrintable) {
        const auto character = static_cast<char16_t>(unit);
        Replace(edit, {&character, 1});
    } else if (unit == u'\r' && (edit.style & ES_MULTILINE) != 0) {
        Replace(edit, u"\r\n");
    }
}

LRESULT SetText(EditControl& edit, LPARAM text) {
    edit.text = TextOrEmpty(reinterpret_cast<const WCHAR*>(text));
    PlaceInsertion(edit, edit.text.size());
    if ((edit.style & ES_MULTILINE) == 0) NotifyChange(edit.handle);
    return TRUE;
}

void Select(EditControl& edit, WPARAM start, LPARAM end) {
    const size_t length = edit.text.size();
    const auto first = static_cast<int>(start);
    const auto last = static_cast<int>(end);
    if (first < 0) return PlaceInsertion(edit, edit.selectionEnd);
    edit.selectionStart = std::min<size_t>(static_cast<size_t>(first), length);
    edit.selectionEnd = last < 0 ? length : std::min<size_t>(static_cast<size_t>(last), length);
}

LRESULT Selection(const EditControl& edit, WPARAM start, LPARAM end) {
    const auto first = static_cast<DWORD>(std::min(edit.selectionStart, edit.selectionEnd));
    const auto last = static_cast<DWORD>(std::max(edit.selectionStart, edit.selectionEnd));
    if (start != 0) *reinterpret_cast<DWORD*>(start) = first;
    if (end != 0) *reinterpret_cast<DWORD*>(end) = last;
    return MAKELONG(first, last);
}

/* The messages of edit fields alone. */
LRESULT HandleEditMessage(EditControl& edit, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case EM_LIMITTEXT:
            edit.limit = wParam != 0 ? static_cast<size_t>(wParam) : noLimit;
            return 0;
        case EM_GETLIMITTEXT:
            return static_cast<LRESULT>(edit.limit);
        case EM_SETSEL:
            Select(edit, wParam, lParam);
            return 0;
        case EM_GETSEL:
            return Selection(edit, wParam, lParam);
        case EM_REPLACESEL:
            Replace(edit, TextOrEmpty(reinterpret_cast<const WCHAR*>(lParam)));
            return 0;
        case EM_SETPASSWORDCHAR:
            edit.passwordCharacter = static_cast<char16_t>(wParam);
            return 0;
        case EM_GETPASSWORDCHAR:
            return edit.passwordCharacter;
        case EM_SETREADONLY:
            edit.style = wParam != 0 ? edit.style | ES_READONLY : edit.style & ~DWORD{ES_READONLY};
            return TRUE;
        default:
            return DefWindowProcW(edit.handle, message, wParam, lParam);
    }
}

}  // namespace

std::u16string EditControl::ShownText() const {
    return IsPassword() ? std::u16string(text.size(), u'*') : text;
}

LRESULT WINAPI EditProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const OwnWork ownWork;
    auto* const edit = Screen::Current().Lookup<EditControl>(handle);
    if (edit == nullptr) return 0;
    switch (message) {
        case WM_SETTEXT:
            return SetText(*edit, lParam);
        case WM_CHAR:
            TypeUnit(*edit, wParam);
            return 0;
        case WM_SETFOCUS:
            NotifyContainer(*edit, EN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            NotifyContainer(*edit, EN_KILLFOCUS);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            PlaceInsertion(*edit, edit->text.size());
            Screen::Current().SetFocus(handle);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS;
        default:
            return HandleEditMessage(*edit, message, wParam, lParam);
    }
}

}  // namespace simulator
