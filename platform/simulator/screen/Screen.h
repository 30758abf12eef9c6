/* The windows of the screen, and how messages reach them. */
#pragma once

#include "Platform.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "machine/Handles.h"

namespace simulator {

constexpr LONG screenWidth = 240;
constexpr LONG screenHeight = 320;
constexpr LONG barHeight = 26;  // of the task bar above and of a menu bar below

struct Window : Object {
    explicit Window(const char* kindName) : Object(kindName) {}

    bool IsVisible() const { return (style & WS_VISIBLE) != 0; }
    bool IsEnabled() const { return (style & WS_DISABLED) == 0; }

    HWND handle = nullptr;
    HWND container = nullptr;  // the window that this one is a child of
    HWND owner = nullptr;      // of a top-level window: the one that it is destroyed with
    std::u16string className;
    WNDPROC procedure = nullptr;
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    int id = 0;
    std::u16string text;
    HFONT font = nullptr;
    RECT place{};  // in the containing window or on the screen
    std::vector<HWND> childWindows;
    bool isBeingDestroyed = false;
};

/* Calls a procedure of the library or of a test: what it allocates counts again. An exception that leaves it
 * is a violation, and the result is 0. */
LRESULT CallProcedure(WNDPROC procedure, HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CallDialogProcedure(DLGPROC procedure, HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

class Screen {
public:
    static Screen& Current();

    /* Puts a window on the screen, behind its siblings. Only a child of a window has `container`. */
    HWND Add(std::unique_ptr<Window> window);

    /* The window of that handle and type, or null. */
    template <class Type = Window>
    Type* Lookup(HWND handle) const {
        return dynamic_cast<Type*>(Handles::Current().Lookup(handle));
    }

    /* As Lookup; a handle that is neither null nor such a window is a violation. */
    template <class Type = Window>
    Type* Find(HWND handle, const Call& call) const {
        return Handles::Current().Find<Type>(handle, call);
    }

    /* Sends a message and waits for its result; 0 when there is no such window. */
    LRESULT Deliver(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

    void Post(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

    /* Delivers the oldest message that was posted; false when there is none. */
    bool DeliverPosted();

    /* Destroys a window with what it contains and owns, each told by WM_DESTROY and WM_NCDESTROY. */
    void Destroy(HWND handle);

    HWND Focus() const { return focus_; }

    /* Moves the focus; both windows are told. */
    void SetFocus(HWND handle);

    /* Whether the user can reach it: it, and all that contain it, are visible and enabled. */
    bool IsReachable(const Window& window) const;

    /* The window itself, or the outermost of those that contain it. */
    const Window& TopLevelOf(const Window& window) const;

    /* The next window of the same container; null for the last one. */
    HWND NextOf(const Window& window) const;

    const std::vector<HWND>& TopLevels() const { return topLevels_; }

    /* Nothing has the focus, nothing is posted. */
    void BeginTest();

    /* Reports the top-level windows and the menus that were made in this test and are still there, and
     * removes them, windows with all they contain and own. */
    void EndTest();

private:
    struct Posted {
        HWND handle;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    void TellDestroyed(HWND handle);
    std::vector<HWND> OwnedBy(HWND handle) const;
    void Remove(HWND handle);
    void ReportWindows();

    std::vector<HWND> topLevels_;
    std::deque<Posted> posted_;
    HWND focus_ = nullptr;
};

/* How the journal names a window: "dialog 1", null, or its value when the simulator never gave it out. */
std::string WindowName(HWND handle);

/* How the journal names a window procedure. */
std::string ProcedureName(WNDPROC procedure);

}  // namespace simulator
