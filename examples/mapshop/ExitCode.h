/* What the program's exit code says. */
#pragma once

enum ExitCode : int {
    exitDone = 0,           // done; for a search: the service answered, with or without results
    exitNoAnswer = 1,       // nobody answered, the answer was a refusal, or it broke off (behind results)
    exitUsage = 2,          // the command line is at fault
    exitLibraryFailed = 3,  // the online library cannot be used
    exitNotWritten = 4,     // the local file cannot be written
    exitCancelled = 5,      // the user interrupted the program
};
