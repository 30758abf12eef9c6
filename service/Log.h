/* The service's log: standard error, one line at a time. */
#pragma once

#include <string_view>

/* Writes one line, whole even when several threads log at once. Control bytes in it become \xHH: what a
 * client sends cannot start a line of its own. */
void LogLine(std::string_view text);
