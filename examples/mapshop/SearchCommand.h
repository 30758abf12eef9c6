/* `mapshop search`: what the map shop has for some boxes. */
#pragma once

#include <string>
#include <vector>

/* What the program's exit code says. */
enum ExitCode : int {
    exitDone = 0,           // the service answered, with or without results
    exitNoAnswer = 1,       // no results, and nothing that shows that the service answered
    exitUsage = 2,          // the command line is at fault
    exitLibraryFailed = 3,  // the online library cannot be used
};

/* Searches for the boxes that `arguments` describe (see ParseBoxes; none: everything) and prints the results
 * as a table, or why there are none. */
ExitCode RunSearch(const std::vector<std::wstring>& arguments);
