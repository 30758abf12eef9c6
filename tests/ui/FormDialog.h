/* A dialog with one control of each kind whose operations tests can hook into. */
#pragma once

#include "Platform.h"

#include <functional>

#include "../resources/TestResources.h"
#include "ui/Dialog.h"

class FormDialog : public Dialog {
public:
    explicit FormDialog(uint32_t id = FORM_DIALOG) : Dialog(id) {}

    BOOL OnInitDialog(WPARAM wParam, LPARAM lParam) override {
        if (onInit) onInit();
        return Dialog::OnInitDialog(wParam, lParam);
    }
    void OnDialogCommand(int id, HWND control, int notification) override {
        if (onCommand) onCommand(id, control, notification);
        Dialog::OnDialogCommand(id, control, notification);
    }
    void OnDialogNotify(WPARAM wParam, LPARAM lParam) override {
        if (onNotify) onNotify(wParam, lParam);
    }
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        return onMessage ? onMessage(message, wParam, lParam) : 0;
    }
    void OnDestroy() override {
        if (onDestroy) onDestroy();
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (onWindowMessage) onWindowMessage(message);
        return Dialog::WindowProc(message, wParam, lParam);
    }

    std::function<void()> onInit;
    std::function<void(int id, HWND control, int notification)> onCommand;
    std::function<void(WPARAM, LPARAM)> onNotify;
    std::function<INT_PTR(UINT, WPARAM, LPARAM)> onMessage;
    std::function<void()> onDestroy;
    std::function<void(UINT)> onWindowMessage;
};
