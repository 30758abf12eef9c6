/* Programs that a test runs. */
#pragma once

#include <functional>
#include <string>

#include "Platform.h"

struct ChildOutcome {
    DWORD exitCode = 0;
    std::string output; /* the standard output, with line feeds for line ends */
    std::string errors; /* the standard error output, likewise */
};

/* Runs a program to its end. `commandLine` begins with the program's path; it runs in `folder`, which is also
 * where it finds DLLs after its own folder. Throws std::runtime_error when it cannot be started. */
ChildOutcome RunChild(const std::wstring& commandLine, const std::wstring& folder);

/* Starts a program in the same way, and ends it from outside as soon as `isTime`; also when that is never
 * within 30 s. Returns whether the program had not come to its end by itself before. */
bool KillChild(const std::wstring& commandLine, const std::wstring& folder,
               const std::function<bool()>& isTime);
