#include "helpers/HeapUse.h"

#include "Platform.h"

#include <array>
#include <stdexcept>

namespace {

size_t UseOf(HANDLE heap) {
    PROCESS_HEAP_ENTRY entry{};
    size_t bytes = 0;
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    }
    const bool isWhole = GetLastError() == ERROR_NO_MORE_ITEMS;
    HeapUnlock(heap);
    if (!isWhole) throw std::runtime_error("a heap cannot be walked");
    return bytes;
}

}  // namespace

size_t HeapUse() {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    if (count > heaps.size()) throw std::runtime_error("there are too many heaps");
    size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i)
        bytes += UseOf(heaps[i]);
    return bytes;
}
