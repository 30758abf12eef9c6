/* The user of the dialogs that a test shows: acts in a thread of its own while they run in the test's. */
#pragma once

#include "Platform.h"

#include <functional>
#include <string>
#include <thread>

#include "helpers/UserInput.h"
#include "helpers/WindowContents.h"

class ScreenUser {
public:
    using Script = std::function<void(const ScreenUser&)>;

    /* Begins `script`, in a thread of its own, for the windows of the calling one. One user at a time. */
    explicit ScreenUser(Script script);

    /* Waits for the script's end. A script that fails, or that has not ended every dialog 10 s after its end,
     * has failed the test; the dialogs that are left are then closed. */
    ~ScreenUser();

    ScreenUser(const ScreenUser&) = delete;
    ScreenUser& operator=(const ScreenUser&) = delete;

    /* The dialog or message box with that caption, once it can be used. This and the functions below throw
     * std::runtime_error when what they wait for does not come within 10 s. */
    HWND WaitForDialog(const std::wstring& caption) const;

    /* The pop-up menu that is open. */
    HMENU WaitForMenu() const;

    /* Waits until the condition holds, looking every few milliseconds. */
    void WaitUntil(const std::string& what, const std::function<bool()>& condition) const;

    struct Message {
        HWND box;
        std::wstring text;
        HICON icon; /* null: none is shown */
        HWND owner;
    };

    /* The message box with that caption. */
    Message ReadMessage(const std::wstring& caption) const;

    /* As above, and closes the box with OK. */
    Message TakeMessage(const std::wstring& caption) const;

private:
    void Run(const Script& script);
    void CloseWhatIsLeft() const;
    HWND FindDialog(const std::wstring& caption) const;

    DWORD thread;
    HANDLE finished;
    std::thread acting;
};
