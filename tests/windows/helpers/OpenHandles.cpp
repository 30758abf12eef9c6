#include "helpers/OpenHandles.h"

#include "Platform.h"
// Builds on windows.h.
#include <winternl.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

/* GetProcessHandleCount is no help: under Wine it says 0. */
size_t OpenHandles() {
    std::vector<BYTE> bytes(1U << 20);
    while (NtQuerySystemInformation(SystemHandleInformation, bytes.data(), static_cast<ULONG>(bytes.size()),
                                    nullptr) < 0) {
        if (bytes.size() > (64U << 20)) throw std::runtime_error("the system's handles cannot be listed");
        bytes.resize(bytes.size() * 2);
    }
    const auto* const table = reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(bytes.data());
    return static_cast<size_t>(std::count_if(
        table->Handle, table->Handle + table->Count,
        [](const SYSTEM_HANDLE_ENTRY& entry) { return entry.OwnerPid == GetCurrentProcessId(); }));
}
