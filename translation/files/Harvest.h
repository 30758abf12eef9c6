/* Files that the library has written of texts without a translation. */
#pragma once

#include "text/WideString.h"

#include <vector>

/* Whether the library itself may have written the lines, and nobody has touched them since. */
bool IsRawHarvest(const std::vector<WideString>& lines);

/* The text of each line, empty for an empty line, when they are a harvest that was not touched, or one in
 * which some translations have been written and nothing else; otherwise nothing. */
std::vector<WideString> TextsOfHarvest(const std::vector<WideString>& lines);
