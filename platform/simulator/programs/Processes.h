#pragma once

#include "Platform.h"

namespace simulator {

/* Whether the handle is open and a process's. */
bool IsProcess(HANDLE handle);

/* No programs were started, the shell gives process handles, nothing is called before this process ends. */
void ResetPrograms();

}  // namespace simulator
