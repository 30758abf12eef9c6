#include "HeapUse.h"

#include <windows.h>

static void AddHeap(HANDLE heap, HeapUse* use) {
    PROCESS_HEAP_ENTRY entry;
    ZeroMemory(&entry, sizeof entry);
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)) continue;
        use->bytes += entry.cbData;
        ++use->blocks;
    }
    HeapUnlock(heap);
}

HeapUse UseOfAllHeaps(void) {
    enum { mostHeaps = 64 };
    HANDLE heaps[mostHeaps];
    HeapUse use = {0, 0};
    const DWORD count = GetProcessHeaps(mostHeaps, heaps);
    for (DWORD i = 0; i < count && i < mostHeaps; ++i)
        AddHeap(heaps[i], &use);
    return use;
}
