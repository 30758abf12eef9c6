#include "ui/WindowBinding.h"

#include <memory>
#include <new>

namespace {

constexpr int longestChain = 1000;

WNDPROC ProcOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

void SetProc(HWND window, WNDPROC proc) {
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
}

WindowHookRecord* ChainOf(HWND window) {
    return reinterpret_cast<WindowHookRecord*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void SetChain(HWND window, WindowHookRecord* head) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(head));
}

/* A record and the one in front of it, which is null at the head of the chain. */
struct FoundRecord {
    WindowHookRecord* record = nullptr;
    WindowHookRecord* front = nullptr;
};

FoundRecord FindRecord(HWND window, WNDPROC key) {
    FoundRecord found{ChainOf(window), nullptr};
    for (int walked = 0; found.record != nullptr && walked < longestChain; ++walked) {
        if (found.record->key == key) return found;
        found = {found.record->next, found.record};
    }
    return {};
}

}  // namespace

bool WindowBindingTable::AttachWindow(HWND window, Window* object) const {
    if (WindowHookRecord* const record = FindRecord(window, key).record) {
        record->object = object;
        return false;
    }
    const WNDPROC current = ProcOf(window);
    if (current == nullptr || current == key) return false;

    auto* const record = new (std::nothrow) WindowHookRecord{key, current, object, ChainOf(window)};
    if (record != nullptr) SetProc(window, key);
    SetChain(window, record);
    // The window's user data owns the record.
    return true;  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
}

bool WindowBindingTable::DetachWindow(HWND window) const {
    const auto [record, front] = FindRecord(window, key);
    if (record == nullptr) return false;
    // A record in front must have been installed directly on top of our procedure: otherwise yet another
    // procedure calls ours, and goes on to do so.
    if (front != nullptr && front->previousProc != key) return false;

    const std::unique_ptr<WindowHookRecord> removed(record);
    if (front != nullptr) {
        front->next = removed->next;
        front->previousProc = removed->previousProc;
    } else {
        SetProc(window, removed->previousProc);
        SetChain(window, removed->next);
    }
    return true;
}

Window* WindowBindingTable::FindWindowObject(HWND window) const {
    const WindowHookRecord* const record = FindRecord(window, key).record;
    return record != nullptr ? record->object : nullptr;
}

LRESULT WindowBindingTable::CallPreviousProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    const WindowHookRecord* const record = FindRecord(window, key).record;
    if (record == nullptr) return 0;
    const WNDPROC previousProc = record->previousProc;
    if (message == WM_DESTROY) DetachWindow(window);
    return CallWindowProcW(previousProc, window, message, wParam, lParam);
}
