/* Runs programs of the device. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct ProgramResult {
    uint32_t exitCode = 0;
    std::string output;  // what it printed
    std::string errors;
};

/* Runs the program in a file of this computer to its end, with the arguments in `commandLine`. It finds
 * libraries at their paths on the device. What it leaves on the heap is a violation; so is a file that is no
 * program, and the exit code is 0xFFFFFFFF then. Not two at a time. */
ProgramResult RunProgram(const std::string& file, std::u16string_view commandLine);
