/* A test that shows dialogs of its own: the sample resources, and procedures that are told what to do. */
#pragma once

#include "SimulatorTest.h"

#include <algorithm>
#include <functional>
#include <map>
#include <stdexcept>

/* A dialog whose procedure calls the functions given here. Messages without one are not handled. */
class SampleDialog {
public:
    using Handler = std::function<INT_PTR(HWND dialog, WPARAM wParam, LPARAM lParam)>;

    SampleDialog() {
        On(WM_INITDIALOG, [](HWND, WPARAM, LPARAM) { return TRUE; });
        On(WM_COMMAND, [this](HWND dialog, WPARAM wParam, LPARAM lParam) {
            commands.push_back(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
            commandWindow = reinterpret_cast<HWND>(lParam);
            if (HIWORD(wParam) == 0 && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL))
                EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        });
    }
    SampleDialog(const SampleDialog&) = delete;
    SampleDialog& operator=(const SampleDialog&) = delete;

    void On(UINT message, Handler handler) { handlers_[message] = std::move(handler); }

    /* Runs the dialog of that template of the library. */
    INT_PTR Run(WORD id = 100, HWND owner = nullptr) {
        const HINSTANCE library = Device::Current().LibraryInstance();
        const HRSRC resource = FindResourceW(library, MAKEINTRESOURCEW(id), RT_DIALOG);
        const auto* const source = static_cast<const DLGTEMPLATE*>(LoadResource(library, resource));
        return DialogBoxIndirectParamW(library, source, owner, Procedure, reinterpret_cast<LPARAM>(this));
    }

    /* Makes the menu bar; to be called in WM_INITDIALOG. Null when that fails. */
    static HWND MakeBar(HWND dialog, UINT id) {
        SHMENUBARINFO info{};
        info.cbSize = sizeof info;
        info.hwndParent = dialog;
        info.dwFlags = SHCMBF_HMENU;
        info.nToolBarId = id;
        info.hInstRes = Device::Current().LibraryInstance();
        return SHCreateMenuBar(&info) ? info.hwndMB : nullptr;
    }

    /* Gives the dialog a menu bar. */
    void HasBar(UINT id) {
        On(WM_INITDIALOG, [this, id](HWND dialog, WPARAM, LPARAM) {
            bar = MakeBar(dialog, id);
            return TRUE;
        });
    }

    std::vector<std::string> commands;  // "id:code" of each WM_COMMAND
    HWND commandWindow = nullptr;       // what the last one came from
    HWND bar = nullptr;
    std::vector<UINT> messages;  // all that came to the procedure

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        auto* const self = reinterpret_cast<SampleDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
        if (self == nullptr) return 0;
        self->messages.push_back(message);
        const auto found = self->handlers_.find(message);
        return found != self->handlers_.end() ? found->second(dialog, wParam, lParam) : 0;
    }

    std::map<UINT, Handler> handlers_;
};

class DialogTest : public SimulatorTest {
protected:
    void SetUp() override {
        SimulatorTest::SetUp();
        static const std::vector<Resource> resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
        device.SetResources(device.LibraryInstance(), resources);
    }

    /* What the user does next in a dialog. */
    void User(DialogScript script) { device.UseDialog(std::move(script)); }

    static void Cancel(DialogUser& user) { user.Send(WM_COMMAND, IDCANCEL, 0); }

    /* How often the message is among those. */
    static size_t Count(const std::vector<UINT>& messages, UINT message) {
        return static_cast<size_t>(std::count(messages.begin(), messages.end(), message));
    }

    /* The resource's bytes, to be changed. */
    static std::string& BytesOf(std::vector<Resource>& resources, uint16_t type, uint16_t name) {
        for (Resource& resource : resources) {
            if (resource.type.number == type && resource.name.number == name) return resource.bytes;
        }
        throw std::out_of_range("no such resource");
    }
};
