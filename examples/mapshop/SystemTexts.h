/* What the program says differently on a desktop and on a handheld. */
#pragma once

#include <string_view>

/* The rest of what the help says of the download, from the end of its last sentence on: how it is cancelled,
 * and which names FILE may be. Ends without a line feed. */
std::wstring_view DownloadHelp();

/* A name for a file, for the help's examples. */
std::wstring_view ExampleFile();

/* Why the library's file is there and cannot be loaded when something that it needs is missing: the end of a
 * sentence that begins with the file's path. */
std::wstring_view MissingPartProblem();
