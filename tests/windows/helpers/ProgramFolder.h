/* Where the test program lies, with the files that are tested. */
#pragma once

#include <string>

/* The test program's folder, without a separator at its end. Throws std::runtime_error if it is too long. */
std::wstring ProgramFolder();
