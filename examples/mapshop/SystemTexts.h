/* What the program says differently on a desktop and on a handheld. */
#pragma once

#include <string_view>

/* The end of what the help says of the download: how to cancel it, or what FILE must be. It follows a full
 * stop, and ends without a line feed. */
std::wstring_view DownloadHelp();

/* A name for a file, for the help's examples. */
std::wstring_view ExampleFile();

/* The end of a sentence that begins with the path of the library's file: that it cannot be loaded, although
 * it is there, because something that it needs is missing. */
std::wstring_view MissingPartProblem();
