/* What a process has allocated. */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct HeapUse {
    size_t bytes; /* asked for, without what the heaps need for themselves */
    size_t blocks;
} HeapUse;

/* Of all heaps of the process: the system's functions and each C runtime may use one of their own. */
HeapUse UseOfAllHeaps(void);

#ifdef __cplusplus
}
#endif
