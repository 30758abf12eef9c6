/* The service's command line. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>

#include "HttpServer.h"

/* What is wrong with a command line: one sentence. */
class OptionError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Options {
    bool help = false;     // the rest may be missing then
    bool version = false;  // likewise
    HttpServerOptions server;
    std::filesystem::path dataFolder;
    std::optional<int32_t> madeUpMaps;  // none: the regions of the world
};

/* How the service is called, for people; ends in a line feed. */
extern const char* const usage;

/* Takes the arguments after the program's name. Throws OptionError for those that are unknown, incomplete,
 * empty, out of range or missing. An option given twice: the last one counts. */
Options ParseOptions(std::span<const char* const> arguments);
