/* `mapshop download`: a file of a web host, whole. */
#pragma once

#include <string>
#include <vector>

#include "ExitCode.h"

/* Downloads as `arguments` say (PATH FILE and options), shows the progress, and prints the outcome. */
ExitCode RunDownload(const std::vector<std::wstring>& arguments);
