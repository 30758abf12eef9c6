/* Counting handles, to see that none is left open. */
#pragma once

#include <cstddef>

/* How many handles of the system this process holds. Throws std::runtime_error when they cannot be listed. */
size_t OpenHandles();
