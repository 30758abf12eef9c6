/* The part of the handheld's shell library that is used here. The library exports by ordinal. */
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Ordinal 9. Prepares the shell's own controls for the calling module. The device's function takes no
 * parameters and leaves those that it is given alone; the desktop stand-in takes all three. */
BOOL WINAPI SHInitExtraControls(HINSTANCE instance, DWORD reason, LPVOID reserved);

#ifdef __cplusplus
}
#endif
