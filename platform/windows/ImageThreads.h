/* Threads, for the images' runtime: nothing keeps a program from using the DLL in several. */
#pragma once

#include <windows.h>

inline DWORD CurrentThread() {
    return GetCurrentThreadId();
}

/* Held for a few instructions at a time, so whoever finds it taken tries again. */
class ThreadLock {
public:
    ThreadLock() {
        while (InterlockedExchange(&isTaken, TRUE) == TRUE)
            Sleep(0);
    }
    ~ThreadLock() { InterlockedExchange(&isTaken, FALSE); }
    ThreadLock(const ThreadLock&) = delete;
    ThreadLock& operator=(const ThreadLock&) = delete;

private:
    static inline LONG isTaken = FALSE;
};
