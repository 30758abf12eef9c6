/* What happens when the library is loaded. DllMain calls it in the DLL; a program that links the library into
 * itself calls it at its start. */
#pragma once

#include "Platform.h"

/* Gets the library ready: prepares the shell's controls, makes the caption of the message boxes, keeps
 * `instance` as the module of the library's resources and loads the user's language file. `instance` is the
 * library's module, or the program's own where the library is linked into it; `reason` and `reserved` are
 * DllMain's (DLL_PROCESS_ATTACH and null in a program). Always true: when memory runs out the caption stays
 * empty or the texts stay English. */
bool AttachLibrary(HINSTANCE instance, DWORD reason, LPVOID reserved) noexcept;
