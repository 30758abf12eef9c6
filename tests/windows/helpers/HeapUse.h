/* Measuring the heaps, to see that nothing is left on them. */
#pragma once

#include <cstddef>

/* The bytes that are allocated on all heaps of the process; the C runtime has one of its own. Throws
 * std::runtime_error when a heap cannot be walked. */
size_t HeapUse();
