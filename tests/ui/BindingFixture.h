/* A control of a dialog on the simulated handheld, which tests bind objects to. */
#pragma once

#include "ui/WindowBinding.h"

#include <functional>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

/* Binds and unbinds a control of a dialog that is on the screen. */
class Binding : public ScreenTest {
protected:
    void WithControl(const std::function<void(HWND control)>& operation) {
        FormDialog dialog;
        device.UseDialog([&](DialogUser& user) {
            operation(GetDlgItem(user.Window(), FORM_FIELD));
            Cancel(user);
        });
        EXPECT_EQ(IDCANCEL, dialog.DoModal(nullptr));
    }

    static WNDPROC ProcOf(HWND window) {
        return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    }
    static WindowHookRecord* ChainOf(HWND window) {
        return reinterpret_cast<WindowHookRecord*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    }
    static void SetProc(HWND window, WNDPROC proc) {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
    }
    static void SetChain(HWND window, WindowHookRecord* head) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(head));
    }

    Window first;
    Window second;
};
