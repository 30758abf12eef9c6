/* Linked into the DLL. The compiler's own runtime, which is linked in too, makes a semaphore for one of its
 * locks when the DLL is loaded, and never closes it: a host that loads and unloads the DLL again and again
 * would collect them. The runtime is therefore given the function below in place of the system's, and the
 * semaphores made by it are closed when the DLL is unloaded. */
#include <windows.h>

enum { mostSemaphores = 8 };
static HANDLE semaphores[mostSemaphores];
static LONG semaphoreCount;

/* The runtime's semaphores have no names. */
static HANDLE WINAPI MakeSemaphore(LPSECURITY_ATTRIBUTES attributes, LONG initial, LONG greatest,
                                   LPCWSTR name) {
    const LONG index = InterlockedIncrement(&semaphoreCount) - 1;
    const HANDLE semaphore = CreateSemaphoreA(attributes, initial, greatest, NULL);
    (void)name;
    if (index < mostSemaphores) semaphores[index] = semaphore;
    return semaphore;
}

/* Where calls of CreateSemaphoreW find its address. */
extern HANDLE(WINAPI* const createSemaphore)(LPSECURITY_ATTRIBUTES, LONG, LONG,
                                             LPCWSTR) __asm__("__imp__CreateSemaphoreW@16");
HANDLE(WINAPI* const createSemaphore)(LPSECURITY_ATTRIBUTES, LONG, LONG, LPCWSTR) = MakeSemaphore;

/* Destructors that run after this one may still throw and catch: a lock that nobody contends for needs no
 * semaphore. */
__attribute__((destructor)) static void CloseSemaphores(void) {
    for (int i = 0; i < mostSemaphores; ++i) {
        if (semaphores[i] != NULL) CloseHandle(semaphores[i]);
    }
}
