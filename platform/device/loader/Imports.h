/* What the simulated handheld offers to images that it loads. */
#pragma once

#include <string_view>

/* The address of a function of a library (COREDLL, WININET, CELLCORE, AYGSHELL) by its name or "#ordinal";
 * null when the simulated handheld does not have it. */
void* FindImport(std::string_view library, std::string_view function);
