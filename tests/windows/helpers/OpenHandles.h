/* Counting handles, to see that none is left open. */
#pragma once

#include <cstddef>
#include <cstdint>

/* How many handles of the system this process holds; without those behind 1024 in a row that are free, and
 * without sockets, which come and go by themselves here: a server of the test's own closes them later, and
 * the WinINet of Wine 8.0 leaves one open now and then when the connection is reset as soon as it is made.
 * Who leaves a request open is found by WinINet's own handles. */
size_t OpenHandles();

/* The handle that WinINet gives out next, which is the least that is free: it goes up when one is left open.
 * Throws std::runtime_error when there is none. */
uintptr_t NextInternetHandle();
