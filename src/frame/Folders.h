/* Folders: making them, and the shell's special ones. */
#pragma once

#include "text/WideString.h"

/* Whether there is a folder at `path` afterwards: makes it and whatever of its parents is missing. An
 * existing file gives false and stays. A path of less than two units that does not exist counts as made: it
 * is where a path begins. As deep as the path has parts, so for paths that the system can name. */
bool CreateFolderPath(const WideString& path);

/* The path of the shell's special folder `csidl` (CSIDL_...), which the shell makes when it is missing; empty
 * when it cannot say. With a `subfolder`, that folder below it, made as by CreateFolderPath; its path is the
 * result even when it could not be made. */
WideString GetSpecialFolderPath(int csidl, WideStringView subfolder = {});
