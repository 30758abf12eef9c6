/* The part of the device that is about other programs, and the end of this one. */
#pragma once

#include "Platform.h"

#include <functional>
#include <string>
#include <vector>

/* A program that was started through the shell. */
struct StartedProgram {
    std::u16string verb;
    std::u16string file;
    std::u16string parameters;
    HWND owner = nullptr;
    std::string ownerName;  // as the journal names it
    int show = 0;
    ULONG mask = 0;
    bool hasHandle = false;  // whether the caller got a process handle
    bool isWaitedFor = false;
};

class DevicePrograms {
public:
    /* The programs that were started through the shell, in order. */
    const std::vector<StartedProgram>& StartedPrograms() const;

    /* Whether the shell gives a process handle to who asks for one. It does at first; documents that a
     * running program opens bring none. A process has ended when it is waited for without a limit. */
    void SetGivesProcessHandles(bool gives);

    /* Called when the library ends this process, before the process ends without running destructors. */
    using TerminationHook = std::function<void(UINT exitCode)>;
    void SetTerminationHook(TerminationHook hook);

protected:
    void Reset();
};
