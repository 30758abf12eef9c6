/* What binds window handles to the objects behind them. Each binding is a record; the records of a window
 * form a chain whose head lies in the window's user data, and which others may lengthen with records of their
 * own. A walk along a chain ends after 1000 records as if nothing had been found: a chain that long is
 * damaged. */
#pragma once

#include <memory>

#include "Platform.h"

class Window;

struct WindowHookRecord {
    WNDPROC key;          /* the procedure that the binding installed; whose record it is shows by it */
    WNDPROC previousProc; /* the procedure before that */
    Window* object;
    WindowHookRecord* next;
};

/* Binds windows to objects through one window procedure, its key. The bindings themselves lie in the windows'
 * user data. */
class WindowBindingTable {
public:
    explicit constexpr WindowBindingTable(WNDPROC keyProc) noexcept : key(keyProc) {}

    /* Binds `object` to `window`. True: a record was made and the key procedure installed. False: there was a
     * record already, whose object `object` replaces (which must be a Dialog if the old one is); or the
     * window is not bound, because the key procedure was installed without a record, there is no such window,
     * or it does not take the record or the procedure. When there is no memory for a record, the window's
     * user data is cleared, no procedure is installed, and the result is true all the same. */
    bool AttachWindow(HWND window, Window* object) const;

    /* Unbinds `window` and gives it the procedure back that it had before. False: there is no record, or it
     * lies behind one whose procedure was not installed directly on top of the key procedure, or the window
     * does not take the procedure; nothing is changed then. A record that the window goes on to hold is kept
     * by its object (Window::KeepRecord). */
    bool DetachWindow(HWND window) const;

    /* The object bound to `window`, or null. */
    [[nodiscard]] Window* FindWindowObject(HWND window) const;

    /* Passes a message on to the procedure before the binding; 0 when there is no binding. With WM_DESTROY
     * the window is unbound first. */
    LRESULT CallPreviousProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const;

private:
    bool Install(HWND window, std::unique_ptr<WindowHookRecord> record) const;

    WNDPROC key;
};

/* The table of the library's windows; it lasts from the library's load to its unload. */
extern WindowBindingTable windowBindings;
