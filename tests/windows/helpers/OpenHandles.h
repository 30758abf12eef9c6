/* Counting handles, to see that none is left open. */
#pragma once

#include <cstddef>

/* How many handles of the system this process holds; without those behind 1024 in a row that are free. */
size_t OpenHandles();

/* The same as soon as there are fewer than `limit`, or after 10 s: sockets are closed a little later on
 * either side of a connection, and later still on a busy machine. */
size_t OpenHandlesOnceBelow(size_t limit);
