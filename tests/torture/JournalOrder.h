/* The order that a journal has to keep. */
#pragma once

#include <string>
#include <vector>

/* What is out of order in a journal: a session, connection, request, registry key, file, process or data
 * connection that is used before it was opened or after it was closed, or is never closed. Data connections
 * may stay up, and be given up more than once. */
std::vector<std::string> OutOfOrder(const std::vector<std::string>& journal);
