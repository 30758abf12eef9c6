/* Threads, for the images' runtime: on the device an image serves one alone. */
#pragma once

inline unsigned long CurrentThread() {
    return 0;
}

class ThreadLock {
public:
    ThreadLock() {}  // NOLINT(modernize-use-equals-default): then the compiler would call it unused
};
