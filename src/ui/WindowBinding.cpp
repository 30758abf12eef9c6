#include "ui/WindowBinding.h"

#include <memory>
#include <new>
#include <utility>

#include "ui/Window.h"

namespace {

constexpr int longestChain = 1000;

WNDPROC ProcOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

/* False when the window keeps the procedure that it has: every window has one before. */
bool SetProc(HWND window, WNDPROC proc) {
    return SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc)) != 0;
}

WindowHookRecord* ChainOf(HWND window) {
    return reinterpret_cast<WindowHookRecord*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

/* False when the window keeps the chain that it has. */
bool SetChain(HWND window, WindowHookRecord* head) {
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(head));
    return ChainOf(window) == head;
}

/* The window goes on to know the record, which therefore lives as long as the object, and is none of ours any
 * more. */
void Disown(WindowHookRecord* record) {
    record->key = nullptr;
    if (record->object != nullptr) record->object->KeepRecord(record);
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

    WindowHookRecord* const next = ChainOf(window);
    std::unique_ptr<WindowHookRecord> record(new (std::nothrow) WindowHookRecord{key, current, object, next});
    if (record == nullptr) {
        SetChain(window, nullptr);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return true;
    }
    return Install(window, std::move(record));
}

bool WindowBindingTable::Install(HWND window, std::unique_ptr<WindowHookRecord> record) const {
    // The record first: a window that had the procedure alone would end the process with its next message.
    if (!SetChain(window, record.get())) return false;
    if (SetProc(window, key)) {
        static_cast<void>(record.release());
        return true;
    }
    if (!SetChain(window, record->next)) Disown(record.release());
    return false;
}

bool WindowBindingTable::DetachWindow(HWND window) const {
    const auto [record, front] = FindRecord(window, key);
    if (record == nullptr) return false;
    // A record in front must have been installed directly on top of our procedure: otherwise yet another
    // procedure calls ours, and goes on to do so.
    if (front != nullptr && front->previousProc != key) return false;

    if (front != nullptr) {
        front->next = record->next;
        front->previousProc = record->previousProc;
    } else {
        if (!SetProc(window, record->previousProc)) return false;
        if (!SetChain(window, record->next)) {
            Disown(record);
            return true;
        }
    }
    if (record->object != nullptr) record->object->GiveRecordBack(record);
    const std::unique_ptr<WindowHookRecord> unbound(record);
    return true;
}

Window* WindowBindingTable::FindWindowObject(HWND window) const {
    const WindowHookRecord* const record = FindRecord(window, key).record;
    return record != nullptr ? record->object : nullptr;
}

LRESULT WindowBindingTable::CallPreviousProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    WindowHookRecord* const record = FindRecord(window, key).record;
    if (record == nullptr) return 0;
    const WNDPROC previousProc = record->previousProc;
    // One that cannot be unbound goes on to pass the window's last messages on.
    if (message == WM_DESTROY && !DetachWindow(window) && record->object != nullptr)
        record->object->KeepRecord(record);
    return CallWindowProcW(previousProc, window, message, wParam, lParam);
}
