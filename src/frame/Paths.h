/* Taking paths apart. The separators are `/`, `\` and `:`; positions and lengths count code units. */
#pragma once

#include "text/WideString.h"

/* The largest index in `path` of any unit of `set`, or WideString::npos. */
size_t FindLastOf(WideStringView path, WideStringView set);

/* The file name without folder and extension: what follows the last separator, up to its last "." if it has
 * one. The result is empty for a name whose only "." is its first unit. */
WideString GetBaseName(WideStringView path);

/* Everything before the last separator; "." when there is none. */
WideString GetFolderPart(WideStringView path);
