/* Makes folders, and finds the shell's special ones. */
#pragma once

#include "text/WideString.h"

/* Makes the folder at `path` and those of its parents that are missing. Whether there is a folder at `path`
 * afterwards; a file there gives false and stays. A path of less than two units that does not exist counts as
 * made: it is where a path begins. The recursion is as deep as the path has parts, so this is for paths that
 * the system can name. */
bool CreateFolderPath(const WideString& path);

/* The path of the shell's special folder `csidl` (CSIDL_...), which the shell makes when it is missing; empty
 * when the shell does not know it. With a `subfolder`, the path of that folder below it, which is made as by
 * CreateFolderPath; the result is the same when it could not be made. */
WideString GetSpecialFolderPath(int csidl, WideStringView subfolder = {});
