/* The arguments of a command, taken apart. */
#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Commands.h"

struct CommandLine {
    std::vector<std::string> files;
    std::map<std::string, std::string, std::less<>> options; /* by name: "--output" */

    /* The value of an option, or what stands for it. */
    [[nodiscard]] std::string Value(std::string_view option, std::string_view otherwise) const;
};

/* How many files a command takes. */
struct FileCount {
    size_t least = 0;
    size_t most = 0;
};

/* Every option has a value (--output FILE or --output=FILE); the last of two counts. Behind "--" all are
 * files, and "-" is one everywhere. `usage` is the command as --help tells it. Throws UsageError for unknown
 * options, missing values and another number of files. */
CommandLine ReadCommandLine(std::string_view usage, FileCount count,
                            std::initializer_list<std::string_view> options, Arguments arguments);
