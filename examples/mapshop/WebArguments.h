/* The arguments of the commands that fetch from a web host. */
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ProgressDisplay.h"

/* What a command line asks for, or why it is wrong. */
struct WebArguments {
    std::wstring host;                      // --host; the service's own without it
    std::optional<ProgressStyle> progress;  // --progress
    bool resumes = false;                   // --resume
    std::vector<std::wstring> operands;  // what is no option, in its order; the first is the path on the host
    std::wstring problem;                // empty when all is well
};

/* Reads the options --host NAME, --progress bar|lines and --resume wherever they stand, and checks the host
 * and the path. There must be `least` to `most` operands; `form` names them in the message. */
WebArguments ParseWebArguments(const std::vector<std::wstring>& arguments, size_t least, size_t most,
                               const std::wstring& form);
