/* The base of the library's windows: an object behind a window handle that sees the window's messages first.
 * WindowBindingTable::AttachWindow binds the two; its caller also sets `window`, and until then messages are
 * only passed on. */
#pragma once

#include <memory>

#include "base/LastError.h"
#include "ui/WindowBinding.h"

/* A handler does not keep its message: every message then goes on to the procedure that the window had
 * before, and that procedure's result is the message's. Only OnNotify decides both for itself. When a handler
 * throws, a window that is a dialog is ended with -1, which is too late in OnDestroy. */
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    virtual void OnPaint() {}
    virtual void OnDestroy() {}

    /* `control` is null for a menu; `notification` is 0 for a menu and for a pressed button. */
    virtual void OnCommand(int /*id*/, HWND /*control*/, int /*notification*/) {}

    /* Returns the message's result; if not overridden, that of the previous procedure. */
    virtual LRESULT OnNotify(WPARAM wParam, LPARAM lParam);

    /* The stylus went down at `x`, `y` of the window, in pixels; `keys` are MK_... flags. */
    virtual void OnLButton(bool /*isDoubleClick*/, int /*x*/, int /*y*/, WPARAM /*keys*/) {}

    virtual void OnTimer(WPARAM /*timer*/) {}

    /* `width` and `height` are the window's new inner size in pixels. */
    virtual void OnSize(int /*width*/, int /*height*/) {}

    /* Destroys the window if it still exists. Until then `window` must belong to this object alone: no other
     * object may be bound to it, and it must be null once the window has been destroyed. */
    virtual ~Window();

    /* Handles a message: calls its handler, then the previous procedure. */
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    /* The procedure of every bound window. That an unbound window has it is a programming error: the user is
     * told, and the process ends with exit code 1. */
    static LRESULT CALLBACK wndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /* Takes over a record of this object that could not be taken from its window, which may therefore still
     * lead there. It is freed with the object, after the window; one that was kept before, at once. */
    void KeepRecord(WindowHookRecord* record) {
        if (keptRecord.get() != record) keptRecord.reset(record);
    }

    /* Gives a record back that has been taken from its window after all. */
    void GiveRecordBack(const WindowHookRecord* record) {
        if (keptRecord.get() == record) static_cast<void>(keptRecord.release());
    }

    /* Null until the window is bound, and again after WM_DESTROY. */
    HWND window = nullptr;

    /* What went wrong first, in the codes of the last error: a handler that threw (memory ran out then), or,
     * of a dialog, what DoModal says. */
    FirstFailure failure;

protected:
    /* Destroys the window if it still exists. For the destructor of a derived class whose operations the
     * window needs until then. */
    void DestroyLiveWindow() const;

private:
    void CallHandler(UINT message, WPARAM wParam, LPARAM lParam);

    std::unique_ptr<WindowHookRecord> keptRecord;
};
