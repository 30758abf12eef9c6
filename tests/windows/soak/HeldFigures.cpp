#include "soak/HeldFigures.h"

#include "Platform.h"
// Build on windows.h.
#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "helpers/OpenHandles.h"

namespace {

void Require(bool done, const char* what) {
    if (!done) throw std::runtime_error(std::string(what) + " cannot be counted");
}

/* The table of graphics objects that the system shares with the process. GetGuiResources is no help: under
 * Wine it says 0. */
struct GraphicsEntry {
    uint64_t object;
    uint32_t owner;
    uint16_t unique;
    uint8_t type;  // 0: the entry is free
    uint8_t flags;
    uint64_t user;
};
constexpr size_t graphicsEntries = 0x4000;
constexpr size_t graphicsTableInBlock = 0x94;  // its place in the process environment block of 32 bits

size_t CountGraphicsObjects() {
    const auto* const block = reinterpret_cast<const BYTE*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const GraphicsEntry* table = nullptr;
    memcpy(&table, block + graphicsTableInBlock, sizeof table);
    Require(table != nullptr, "graphics objects");
    return static_cast<size_t>(std::count_if(table, table + graphicsEntries,
                                             [](const GraphicsEntry& entry) { return entry.type != 0; }));
}

struct OwnWindows {
    DWORD process = GetCurrentProcessId();
    size_t count = 0;
};

BOOL CALLBACK CountWindow(HWND window, LPARAM parameter) {
    auto& windows = *reinterpret_cast<OwnWindows*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == windows.process) ++windows.count;
    return TRUE;
}

BOOL CALLBACK CountTopWindow(HWND window, LPARAM parameter) {
    auto& windows = *reinterpret_cast<OwnWindows*>(parameter);
    const size_t before = windows.count;
    CountWindow(window, parameter);
    if (windows.count > before) EnumChildWindows(window, CountWindow, parameter);
    return TRUE;
}

size_t CountWindows() {
    OwnWindows windows;
    const auto parameter = reinterpret_cast<LPARAM>(&windows);
    EnumWindows(CountTopWindow, parameter);
    for (HWND window = nullptr;
         (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        CountWindow(window, parameter);
    }
    return windows.count;
}

bool IsIcon(HICON handle) {
    ICONINFO info{};
    if (!GetIconInfo(handle, &info)) return false;
    if (info.hbmColor) DeleteObject(info.hbmColor);
    if (info.hbmMask) DeleteObject(info.hbmMask);
    return true;
}

/* Menus and icons belong to no list; but their handles are even numbers of 16 bits, under a count of their
 * reuse that may be left out. */
size_t CountMenusAndIcons() {
    size_t count = 0;
    for (uintptr_t number = 0x20; number < 0x10000; number += 2) {
        if (IsMenu(reinterpret_cast<HMENU>(number)) || IsIcon(reinterpret_cast<HICON>(number))) ++count;
    }
    return count;
}

void CountBlocksOf(HANDLE heap, HeldFigures& figures) {
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
        ++figures.blocks;
        figures.blockBytes += entry.cbData;
    }
    const bool isWhole = GetLastError() == ERROR_NO_MORE_ITEMS;
    HeapUnlock(heap);
    Require(isWhole, "blocks");
}

void CountBlocks(HeldFigures& figures) {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    Require(count <= heaps.size(), "heaps");
    std::for_each_n(heaps.begin(), count, [&](HANDLE heap) { CountBlocksOf(heap, figures); });
}

size_t CountPrivateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    Require(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters), "memory");
    return counters.PagefileUsage;
}

}  // namespace

HeldFigures CountHeld() {
    // Whose settings change lets go of the connections that it keeps for later.
    InternetSetOptionW(nullptr, INTERNET_OPTION_SETTINGS_CHANGED, nullptr, 0);
    HeldFigures figures;
    figures.internetHandles = NextInternetHandle();
    figures.handles = OpenHandles();
    figures.graphicsObjects = CountGraphicsObjects();
    figures.windowObjects = CountWindows() + CountMenusAndIcons();
    CountBlocks(figures);
    figures.privateBytes = CountPrivateBytes();
    return figures;
}
