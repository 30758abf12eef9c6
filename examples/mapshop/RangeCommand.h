/* `mapshop range`: a part of a file of a web host. */
#pragma once

#include <string>
#include <vector>

#include "ExitCode.h"

/* Reads the part that `arguments` name (PATH OFFSET LENGTH [FILE] and options), and prints it as a
 * hexadecimal dump or saves it. */
ExitCode RunRange(const std::vector<std::wstring>& arguments);
