/* `mapshop search`: what the map shop has for some boxes. */
#pragma once

#include <string>
#include <vector>

#include "ExitCode.h"

/* Searches for the boxes that `arguments` describe (see ParseBoxes; none: everything) and prints the results
 * as a table, or why there are none. */
ExitCode RunSearch(const std::vector<std::wstring>& arguments);
