#pragma once

#include "Platform.h"

#include <string>

namespace simulator {

/* The instance handles of the program and of the library. */
HMODULE ProgramModule();
HMODULE LibraryModule();

/* How the journal names a module: library, program, null or its value. */
std::string ModuleName(HMODULE module);

/* Whether the module's resources can be reached: null is the program. */
bool IsLoaded(HMODULE module);

void ResetModules();

}  // namespace simulator
