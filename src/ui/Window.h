/* The base of the library's windows: an object behind a window handle that sees the window's messages first.
 * AttachWindow of the binding table binds the two; whoever calls it sets `window`, and until then messages
 * are only passed on. */
#pragma once

#include "ui/WindowBinding.h"

/* Handlers add behaviour and swallow nothing: every message goes on to the procedure that the window had
 * before, and that procedure's result is the message's; OnNotify alone decides for itself. A handler that
 * throws ends the dialog that the window is with -1; OnDestroy comes too late for that. */
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    virtual void OnPaint() {}
    virtual void OnDestroy() {}

    /* `control` is null for a menu; `notification` is 0 for a menu and for a pressed button. */
    virtual void OnCommand(int /*id*/, HWND /*control*/, int /*notification*/) {}

    /* The result is the message's; as it stands, that of the previous procedure. */
    virtual LRESULT OnNotify(WPARAM wParam, LPARAM lParam);

    /* The stylus went down at `x`, `y` of the window, in pixels; `keys` are MK_... flags. */
    virtual void OnLButton(bool /*isDoubleClick*/, int /*x*/, int /*y*/, WPARAM /*keys*/) {}

    virtual void OnTimer(WPARAM /*timer*/) {}

    /* The inner size in pixels. */
    virtual void OnSize(int /*width*/, int /*height*/) {}

    /* Destroys the window if it is still there. The handle must be the object's own to the end: nobody else
     * binds the window, and with the window the handle goes. */
    virtual ~Window();

    /* What becomes of a message: its handler, then the previous procedure. */
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    /* The procedure of every bound window. An unbound one is a programming error: the user is told, and the
     * process ends with 1. */
    static LRESULT CALLBACK wndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /* None until it is bound, and again after WM_DESTROY. */
    HWND window = nullptr;

protected:
    /* A derived class whose windows need its own operations until the end calls this in its destructor. */
    void DestroyLiveWindow();

private:
    void CallHandler(UINT message, WPARAM wParam, LPARAM lParam);
};
