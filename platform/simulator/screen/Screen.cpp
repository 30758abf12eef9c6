#include "Platform.h"

#include "screen/Screen.h"

#include <algorithm>
#include <utility>

#include "machine/Allocations.h"
#include "machine/Journal.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "screen/Menus.h"

namespace simulator {

namespace {

template <class Result, class Procedure>
Result CallContained(Procedure procedure, HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (procedure == nullptr) {
        Violate(WindowName(handle) + " has no procedure");
        return 0;
    }
    try {
        const LibraryWork libraryWork;
        return procedure(handle, message, wParam, lParam);
    } catch (...) {
        Violate("an exception leaves a procedure of " + WindowName(handle));
        return 0;
    }
}

}  // namespace

LRESULT CallProcedure(WNDPROC procedure, HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallContained<LRESULT>(procedure, handle, message, wParam, lParam);
}

INT_PTR CallDialogProcedure(DLGPROC procedure, HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallContained<INT_PTR>(procedure, handle, message, wParam, lParam);
}

Screen& Screen::Current() {
    static Screen& screen = *new Screen;
    return screen;
}

HWND Screen::Add(std::unique_ptr<Window> window) {
    Window& added = *window;
    const auto handle = static_cast<HWND>(Handles::Current().Open(std::move(window)));
    added.handle = handle;
    added.mayStayOpen = true;  // windows that are left have a report of their own
    if (Window* const container = Lookup(added.container)) {
        if (Journal::Current().IsWritten())
            added.name = "control " + std::to_string(added.id) + " of " + container->name;
        container->childWindows.push_back(handle);
    } else {
        topLevels_.push_back(handle);
    }
    return handle;
}

// NOLINTNEXTLINE(readability-make-member-function-const): what it calls changes the screen
LRESULT Screen::Deliver(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const Window* const window = Lookup(handle);
    return window != nullptr ? CallProcedure(window->procedure, handle, message, wParam, lParam) : 0;
}

void Screen::Post(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    posted_.push_back({handle, message, wParam, lParam});
}

bool Screen::DeliverPosted() {
    if (posted_.empty()) return false;
    const Posted oldest = posted_.front();
    posted_.pop_front();
    Deliver(oldest.handle, oldest.message, oldest.wParam, oldest.lParam);
    return true;
}

void Screen::Destroy(HWND handle) {
    Window* const window = Lookup(handle);
    if (window == nullptr || window->isBeingDestroyed) return;
    window->isBeingDestroyed = true;
    for (const HWND owned : OwnedBy(handle))
        Destroy(owned);
    TellDestroyed(handle);
    Remove(handle);
}

void Screen::TellDestroyed(HWND handle) {
    Deliver(handle, WM_DESTROY, 0, 0);
    const Window* const window = Lookup(handle);
    if (window == nullptr) return;
    for (const HWND child : std::vector(window->childWindows))
        TellDestroyed(child);
}

std::vector<HWND> Screen::OwnedBy(HWND handle) const {
    std::vector<HWND> owned;
    for (const HWND other : topLevels_) {
        const Window* const window = Lookup(other);
        if (window != nullptr && window->owner == handle) owned.push_back(other);
    }
    return owned;
}

void Screen::Remove(HWND handle) {
    const Window* const window = Lookup(handle);
    if (window == nullptr) return;
    for (const HWND child : std::vector(window->childWindows))
        Remove(child);
    Deliver(handle, WM_NCDESTROY, 0, 0);
    if (Window* const container = Lookup(window->container)) std::erase(container->childWindows, handle);
    std::erase(topLevels_, handle);
    if (focus_ == handle) focus_ = nullptr;
    Handles::Current().Close(handle);
}

void Screen::SetFocus(HWND handle) {
    if (handle == focus_) return;
    const HWND previous = std::exchange(focus_, handle);
    Deliver(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(handle), 0);
    // Whoever lost the focus may have moved it elsewhere.
    if (focus_ == handle) Deliver(handle, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
}

bool Screen::IsReachable(const Window& window) const {
    if (!window.IsVisible() || !window.IsEnabled()) return false;
    const Window* const container = Lookup(window.container);
    return container == nullptr || IsReachable(*container);
}

const Window& Screen::TopLevelOf(const Window& window) const {
    const Window* const container = Lookup(window.container);
    return container == nullptr ? window : TopLevelOf(*container);
}

HWND Screen::NextOf(const Window& window) const {
    const Window* const container = Lookup(window.container);
    const std::vector<HWND>& siblings = container != nullptr ? container->childWindows : topLevels_;
    const auto found = std::find(siblings.begin(), siblings.end(), window.handle);
    return found != siblings.end() && found + 1 != siblings.end() ? found[1] : nullptr;
}

void Screen::BeginTest() {
    focus_ = nullptr;
    posted_.clear();
}

void Screen::EndTest() {
    ReportWindows();
    ReportMenus();
    BeginTest();
}

void Screen::ReportWindows() {
    for (const HWND handle : std::vector(topLevels_)) {
        Window* const window = Lookup(handle);
        if (window == nullptr || window->isEarlier) continue;
        if (window->owner == nullptr || Lookup(window->owner) == nullptr)
            Violate(window->name + " is still open at the end of the test");
    }
    for (const HWND handle : std::vector(topLevels_)) {
        const Window* const window = Lookup(handle);
        if (window == nullptr || window->isEarlier) continue;
        for (const HWND child : window->childWindows)
            Handles::Current().Close(child);
        std::erase(topLevels_, handle);
        Handles::Current().Close(handle);
    }
}

std::string WindowName(HWND handle) {
    if (!Journal::Current().IsWritten()) return {};
    return Handles::Current().IsKnown(handle) ? Handles::Current().NameOf(handle) : PointerText(handle);
}

std::string ProcedureName(WNDPROC procedure) {
    if (procedure == nullptr) return "null";
    if (procedure == DefDlgProcW) return "dialog procedure";
    return procedure == DefWindowProcW ? "default procedure" : "procedure";
}

}  // namespace simulator
