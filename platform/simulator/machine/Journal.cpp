#include "Platform.h"

#include "machine/Journal.h"

#include <algorithm>

#include "machine/DeviceMachine.h"
#include "machine/Violations.h"

namespace simulator {

namespace {

constexpr std::string_view simulatedFunctions[] = {
    "AppendMenuW",
    "CallWindowProcW",
    "CloseHandle",
    "ConnMgrEstablishConnectionSync",
    "ConnMgrMapURL",
    "ConnMgrReleaseConnection",
    "CreateDirectoryW",
    "CreateFileW",
    "CreateMenu",
    "CreatePopupMenu",
    "CreateWindowExW",
    "DeleteFileW",
    "DestroyMenu",
    "DestroyWindow",
    "DialogBoxIndirectParamW",
    "EnableWindow",
    "EndDialog",
    "FindResourceW",
    "FlushFileBuffers",
    "FreeLibrary",
    "GetClientRect",
    "GetDlgCtrlID",
    "GetDlgItem",
    "GetDlgItemTextW",
    "GetFileAttributesW",
    "GetFocus",
    "GetMenuItemInfoW",
    "GetModuleFileNameW",
    "GetModuleHandleW",
    "GetParent",
    "GetSubMenu",
    "GetWindow",
    "GetWindowLongPtrW",
    "GetWindowRect",
    "GetWindowTextLengthW",
    "GetWindowTextW",
    "HttpOpenRequestW",
    "HttpQueryInfoW",
    "HttpSendRequestW",
    "InternetCloseHandle",
    "InternetConnectW",
    "InternetOpenW",
    "InternetReadFile",
    "IsWindow",
    "IsWindowEnabled",
    "IsWindowVisible",
    "LoadCursorW",
    "LoadLibraryW",
    "LoadResource",
    "LoadStringW",
    "LockResource",
    "MessageBoxW",
    "MoveFileW",
    "PostMessageW",
    "ReadFile",
    "RegCloseKey",
    "RegOpenKeyExW",
    "RegQueryValueExW",
    "SHCreateMenuBar",
    "SHGetSpecialFolderPathW",
    "SHInitDialog",
    "SHInitExtraControls",
    "SHSendBackToFocusWindow",
    "SendDlgItemMessageW",
    "SendMessageW",
    "SetCursor",
    "SetDlgItemTextW",
    "SetFilePointer",
    "SetFocus",
    "SetMenuItemInfoW",
    "SetWindowLongPtrW",
    "SetWindowTextW",
    "ShellExecuteExW",
    "ShowWindow",
    "SizeofResource",
    "TerminateProcess",
    "WaitForSingleObject",
    "WriteFile",
    "_wfopen",
    "fclose",
    "fread",
    "fseek",
    "fwrite",
};

void RequireSimulated(std::string_view function) {
    if (IsSimulatedFunction(function)) return;
    Violate("a test asks for calls to " + std::string(function) + ", which is not simulated");
}

}  // namespace

bool IsSimulatedFunction(std::string_view function) {
    return std::find(std::begin(simulatedFunctions), std::end(simulatedFunctions), function) !=
           std::end(simulatedFunctions);
}

Journal& Journal::Current() {
    static Journal& journal = *new Journal;
    return journal;
}

void Journal::Add(const char* function, std::string line) {
    ++Counter(function);
    if (unlisted_.empty() && !lines_.empty() && lines_.back().text == line) {
        ++lines_.back().times;
    } else if (lines_.size() < mostLines) {
        lines_.push_back({function, std::move(line)});
    } else {
        ++unlisted_[function];
    }
}

size_t& Journal::Counter(const char* function) {
    size_t*& counter = counters_[function];
    if (counter == nullptr) counter = &calls_.try_emplace(function, 0).first->second;
    return *counter;
}

std::vector<std::string> Journal::Lines(const std::function<bool(std::string_view)>& isWanted) const {
    std::vector<std::string> texts;
    for (const Line& line : lines_) {
        if (!isWanted(line.function)) continue;
        texts.push_back(line.times == 1 ? line.text
                                        : line.text + " (" + std::to_string(line.times) + " times)");
    }
    size_t further = 0;
    for (const auto& [function, times] : unlisted_)
        further += isWanted(function) ? times : 0;
    if (further != 0) texts.push_back("... and " + std::to_string(further) + " further calls");
    return texts;
}

size_t Journal::CallsTo(std::string_view function) const {
    const auto found = calls_.find(function);
    return found != calls_.end() ? found->second : 0;
}

void Journal::Clear() {
    lines_.clear();
    unlisted_.clear();
    for (auto& [function, calls] : calls_)
        calls = 0;
}

}  // namespace simulator

using simulator::Journal;

std::vector<std::string> DeviceMachine::Calls() const {
    return Journal::Current().Lines([](std::string_view) { return true; });
}

std::vector<std::string> DeviceMachine::Calls(std::initializer_list<std::string_view> functions) const {
    for (const std::string_view function : functions)
        simulator::RequireSimulated(function);
    return Journal::Current().Lines([&](std::string_view function) {
        return std::find(functions.begin(), functions.end(), function) != functions.end();
    });
}

size_t DeviceMachine::CountCalls(std::string_view function) const {
    simulator::RequireSimulated(function);
    return Journal::Current().CallsTo(function);
}

void DeviceMachine::ForgetCalls() {
    Journal::Current().Clear();
}
