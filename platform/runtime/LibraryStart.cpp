/* The entry point of a DLL: the device's loader calls it for every attach and detach. */
#include "ImageRuntime.h"
#include "Platform.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

extern "C" BOOL WINAPI LibraryStart(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_DETACH) {
        DllMain(instance, reason, reserved);
        EndImage();
        return TRUE;
    }
    if (reason != DLL_PROCESS_ATTACH) return DllMain(instance, reason, reserved);
    if (BeginImage() && DllMain(instance, reason, reserved)) return TRUE;
    EndImage();
    return FALSE;
}
