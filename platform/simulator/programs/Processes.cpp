/* Other programs, and the end of this one. */
#include "Platform.h"

#include <unistd.h>

#include <cstdio>

#include "machine/Call.h"
#include "machine/SystemObject.h"
#include "machine/Text.h"
#include "programs/DevicePrograms.h"
#include "screen/Screen.h"

namespace {

using simulator::Call;
using simulator::Handles;
using simulator::Hex;
using simulator::Quoted;
using simulator::TextOrEmpty;
using simulator::WindowName;

struct Process : simulator::SystemObject {
    explicit Process(size_t index) : SystemObject("process"), started(index) {}

    const size_t started;  // which of the started programs it is
};

struct Programs {
    std::vector<StartedProgram> started;
    bool givesHandles = true;
    DevicePrograms::TerminationHook terminationHook;
};

Programs& CurrentPrograms() {
    static Programs& programs = *new Programs;
    return programs;
}

const HANDLE thisProcess = reinterpret_cast<HANDLE>(~uintptr_t{0});
const HANDLE handheldsThisProcess = reinterpret_cast<HANDLE>(uintptr_t{66});

std::string InfoText(const SHELLEXECUTEINFOW& info) {
    std::string text = "{" + simulator::SizeText(info.cbSize, sizeof info) + ", mask " + Hex(info.fMask) +
                       ", owner " + WindowName(info.hwnd) + ", verb " + Quoted(info.lpVerb) + ", file " +
                       Quoted(info.lpFile);
    if (info.lpParameters != nullptr) text += ", parameters " + Quoted(info.lpParameters);
    if (info.lpDirectory != nullptr) text += ", directory " + Quoted(info.lpDirectory);
    return text + ", show " + std::to_string(info.nShow) + "}";
}

void Record(const SHELLEXECUTEINFOW& info) {
    StartedProgram program;
    program.verb = TextOrEmpty(info.lpVerb);
    program.file = TextOrEmpty(info.lpFile);
    program.parameters = TextOrEmpty(info.lpParameters);
    program.owner = info.hwnd;
    program.ownerName = WindowName(info.hwnd);
    program.show = info.nShow;
    program.mask = info.fMask;
    CurrentPrograms().started.push_back(program);
}

}  // namespace

BOOL WINAPI ShellExecuteExW(LPSHELLEXECUTEINFOW info) {
    Call call("ShellExecuteExW");
    call.Arguments({info != nullptr ? InfoText(*info) : "null"});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (info == nullptr || info->cbSize != sizeof *info) return call.False(ERROR_INVALID_PARAMETER);
    if (Handles::Current().IsKnown(info->hwnd) &&
        simulator::Screen::Current().Find(info->hwnd, call) == nullptr)
        return call.False(ERROR_INVALID_WINDOW_HANDLE);
    Record(*info);
    if ((info->fMask & SEE_MASK_NOCLOSEPROCESS) == 0) return call.True();
    info->hProcess = nullptr;
    if (!CurrentPrograms().givesHandles) return call.True("no process");
    const size_t index = CurrentPrograms().started.size() - 1;
    CurrentPrograms().started[index].hasHandle = true;
    info->hProcess = Handles::Current().Open(std::make_unique<Process>(index));
    return call.True(Handles::Current().NameOf(info->hProcess));
}

DWORD WINAPI WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
    Call call("WaitForSingleObject");
    call.Arguments({Handles::Current().NameOf(handle), simulator::Hex8(milliseconds)});
    const auto fails = [&](DWORD error) {
        return call.Fails(WAIT_FAILED, simulator::Hex8(WAIT_FAILED), error);
    };
    if (call.MustFail()) return fails(call.OrderedError());
    const auto* const process = Handles::Current().Find<Process>(handle, call);
    if (process == nullptr) return fails(ERROR_INVALID_HANDLE);
    if (milliseconds != INFINITE) return call.Returns(DWORD{WAIT_TIMEOUT}, std::to_string(WAIT_TIMEOUT));
    if (process->started < CurrentPrograms().started.size())
        CurrentPrograms().started[process->started].isWaitedFor = true;
    return call.Returns(DWORD{WAIT_OBJECT_0}, "0");
}

HANDLE WINAPI GetCurrentProcess() {
    return thisProcess;
}

BOOL WINAPI TerminateProcess(HANDLE process, UINT exitCode) {
    Call call("TerminateProcess");
    const bool isThis = process == thisProcess || process == handheldsThisProcess;
    call.Arguments({isThis ? "this process" : Handles::Current().NameOf(process), std::to_string(exitCode)});
    if (call.MustFail()) return call.False(call.OrderedError());
    if (!isThis) {
        call.Violates("the library may end its own process only");
        return call.False(ERROR_ACCESS_DENIED);
    }
    call.Done();
    if (CurrentPrograms().terminationHook) CurrentPrograms().terminationHook(exitCode);
    std::fflush(stdout);
    std::fflush(stderr);
    _exit(static_cast<int>(exitCode));
}

void DevicePrograms::Reset() {
    CurrentPrograms() = Programs{};
}

const std::vector<StartedProgram>& DevicePrograms::StartedPrograms() const {
    return CurrentPrograms().started;
}

void DevicePrograms::SetGivesProcessHandles(bool gives) {
    CurrentPrograms().givesHandles = gives;
}

void DevicePrograms::SetTerminationHook(TerminationHook hook) {
    CurrentPrograms().terminationHook = std::move(hook);
}
