/* What commands write, and what `check` says of it. */
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"

/* The lines that `check` prints to the error output. */
inline std::vector<std::string> CheckFile(const std::filesystem::path& path) {
    const std::string arguments[] = {path.string()};
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    RunCheck(arguments);
    testing::internal::GetCapturedStdout();
    std::istringstream told(testing::internal::GetCapturedStderr());
    std::vector<std::string> lines;
    for (std::string line; std::getline(told, line);)
        lines.push_back(line);
    return lines;
}
