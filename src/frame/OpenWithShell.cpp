#include "frame/OpenWithShell.h"

#include "base/Owned.h"

namespace {

struct ProcessKind {
    using Handle = HANDLE;
    static constexpr Handle none = nullptr;
    static void Close(Handle process) noexcept { CloseHandle(process); }
};

}  // namespace

bool OpenWithShell(const WideString& target, HWND owner, bool wait) {
    SHELLEXECUTEINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = wait ? SEE_MASK_NOCLOSEPROCESS : 0;
    info.hwnd = owner;
    info.lpVerb = TEXT("open");
    info.lpFile = target.c_str();
    info.nShow = SW_SHOW;
    if (!ShellExecuteEx(&info)) return false;

    const Owned<ProcessKind> process(wait ? info.hProcess : nullptr);
    if (process) WaitForSingleObject(process.Get(), INFINITE);
    return true;
}
