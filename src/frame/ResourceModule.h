/* The modules that resources are loaded from. */
#pragma once

#include "Platform.h"

/* The module of the library's own resources; null until AttachLibrary or the first GetResourceModule. */
extern HINSTANCE ownModule;

/* "Res.dll"; null until it has been loaded. It stays loaded. */
extern HINSTANCE resourceModule;

/* The module that holds the dialog, menu or text with the number `id`:
 *
 * - From 5000 on it is "Res.dll", loaded when it is first needed. When it cannot be loaded the user is told
 *   so, each time, and the result is null, with the last error of the attempt.
 * - Below 5000 it is `ownModule`; if that is not known yet, it becomes the program's module. */
HINSTANCE GetResourceModule(uint32_t id);
