/* The commands of the program: one file each, which defines one of the constants below. */
#pragma once

#include <string>
#include <vector>

#include "ExitCode.h"

struct Command {
    const wchar_t* name;
    const wchar_t* arguments;   // as the help shows them; empty when it takes none
    std::wstring (*help)();     // what it does: lines, with a line feed before each
    std::wstring (*example)();  // arguments that do something
    ExitCode (*run)(const std::vector<std::wstring>& arguments);
};

extern const Command searchCommand;    // what the map shop has for some boxes
extern const Command downloadCommand;  // a file of a web host, whole
extern const Command rangeCommand;     // a part of one

/* In the help's order. */
inline constexpr const Command* commands[] = {&searchCommand, &downloadCommand, &rangeCommand};
