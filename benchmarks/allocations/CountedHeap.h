/* The heap of a program that contains this, counted: malloc and its kin, for all libraries of the program. */
#pragma once

#include <cstddef>

struct HeapUse {
    size_t calls = 0; /* allocations, reallocations included */
    size_t peak = 0;  /* the most bytes that were in use at a time, beyond those in use at the beginning */
};

/* Forgets what was counted. */
void BeginHeapUse();

/* What has been counted since then. */
HeapUse CurrentHeapUse();
