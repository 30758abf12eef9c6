#include "helpers/ChildProcess.h"

#include <stdexcept>
#include <thread>

#include "base/Owned.h"

namespace {

struct ObjectKind {
    using Handle = HANDLE;
    static constexpr HANDLE none = nullptr;
    static void Close(HANDLE handle) { CloseHandle(handle); }
};
using Object = Owned<ObjectKind>;

struct Pipe {
    Object reading;
    Object writing;
};

/* A pipe whose writing end a child may have. */
Pipe NewPipe() {
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!CreatePipe(&reading, &writing, nullptr, 0)) throw std::runtime_error("CreatePipe");
    SetHandleInformation(writing, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return {Object(reading), Object(writing)};
}

std::string ReadToEnd(HANDLE pipe) {
    std::string text;
    char buffer[4096];
    DWORD some = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &some, nullptr) && some > 0)
        text.append(buffer, some);
    std::erase(text, '\r');
    return text;
}

/* The process. */
Object Start(const std::wstring& commandLine, const std::wstring& folder, HANDLE output, HANDLE errors) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = errors;
    PROCESS_INFORMATION information{};
    std::wstring line = commandLine;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &startup,
                        &information)) {
        throw std::runtime_error("CreateProcess: error " + std::to_string(GetLastError()));
    }
    const Object thread(information.hThread);
    return Object(information.hProcess);
}

}  // namespace

ChildOutcome RunChild(const std::wstring& commandLine, const std::wstring& folder) {
    Pipe output = NewPipe();
    Pipe errors = NewPipe();
    const Object process = Start(commandLine, folder, output.writing.Get(), errors.writing.Get());
    output.writing.Reset();
    errors.writing.Reset();

    ChildOutcome outcome;
    std::jthread errorReader([&] { outcome.errors = ReadToEnd(errors.reading.Get()); });
    outcome.output = ReadToEnd(output.reading.Get());
    errorReader.join();
    WaitForSingleObject(process.Get(), INFINITE);
    GetExitCodeProcess(process.Get(), &outcome.exitCode);
    return outcome;
}

bool KillChild(const std::wstring& commandLine, const std::wstring& folder,
               const std::function<bool()>& isTime) {
    constexpr DWORD patience = 30000;
    const Object process = Start(commandLine, folder, nullptr, nullptr);
    const DWORD began = GetTickCount();
    while (!isTime() && WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT &&
           GetTickCount() - began < patience) {
    }
    const bool isKilled = TerminateProcess(process.Get(), 1) != FALSE;
    WaitForSingleObject(process.Get(), INFINITE);
    return isKilled;
}
