#include "frame/LibraryEntry.h"

/* At detach there is nothing to do: the runtime destroys the process-wide objects afterwards. */
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    return static_cast<BOOL>(AttachLibrary(instance, reason, reserved));
}
