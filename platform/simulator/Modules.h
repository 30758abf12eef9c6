#pragma once

#include "Platform.h"

#include <string>

namespace simulator {

/* How the journal names a module: library, program, null or its value. */
std::string ModuleName(HMODULE module);

void ResetModules();

}  // namespace simulator
