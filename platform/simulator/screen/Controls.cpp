/* What all windows do, and the controls that do no more than that. */
#include "Platform.h"

#include "screen/Controls.h"

#include <algorithm>
#include <cstring>

#include "machine/Allocations.h"
#include "machine/Text.h"

namespace simulator {

namespace {

LRESULT CopyText(const std::u16string& text, WPARAM size, LPARAM buffer) {
    if (size == 0) return 0;
    const size_t length = std::min<size_t>(text.size(), size - 1);
    auto* const units = reinterpret_cast<WCHAR*>(buffer);
    std::memcpy(units, text.data(), length * sizeof(WCHAR));
    units[length] = 0;
    return static_cast<LRESULT>(length);
}

template <class Control>
std::unique_ptr<Window> New(bool isTopLevel, const char16_t* className, WNDPROC procedure) {
    auto control = std::make_unique<Control>(isTopLevel ? "window" : "control");
    control->className = className;
    control->procedure = procedure;
    return control;
}

}  // namespace

std::unique_ptr<Window> NewControl(const std::u16string& className, bool isTopLevel) {
    const std::u16string name = Folded(className);
    if (name == u"edit") return New<EditControl>(isTopLevel, u"edit", EditProcedure);
    if (name == u"button") return New<ButtonControl>(isTopLevel, u"button", ButtonProcedure);
    if (name == u"static") return New<StaticControl>(isTopLevel, u"static", StaticProcedure);
    return nullptr;
}

void PrepareControl(Window& window) {
    auto* const edit = dynamic_cast<EditControl*>(&window);
    if (edit == nullptr) return;
    if ((edit->style & ES_PASSWORD) != 0) edit->passwordCharacter = u'*';
    edit->selectionStart = edit->selectionEnd = edit->text.size();
}

void NotifyContainer(const Window& control, WORD code) {
    Screen::Current().Deliver(control.container, WM_COMMAND, MAKEWPARAM(control.id, code),
                              reinterpret_cast<LPARAM>(control.handle));
}

LRESULT WINAPI StaticProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefWindowProcW(handle, message, wParam, lParam);
}

}  // namespace simulator

LRESULT WINAPI DefWindowProcW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const simulator::OwnWork ownWork;
    auto* const window = simulator::Screen::Current().Lookup(handle);
    if (window == nullptr) return 0;
    switch (message) {
        case WM_SETTEXT:
            window->text = simulator::TextOrEmpty(reinterpret_cast<const WCHAR*>(lParam));
            return TRUE;
        case WM_GETTEXT:
            return simulator::CopyText(window->text, wParam, lParam);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(window->text.size());
        case WM_SETFONT:
            window->font = reinterpret_cast<HFONT>(wParam);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(window->font);
        case WM_CLOSE:
            simulator::Screen::Current().Destroy(handle);
            return 0;
        default:
            return 0;
    }
}
