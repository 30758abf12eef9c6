/* The placeholders of a format, one by one; what they may be is told in text/Placeholders.h. */
#pragma once

#include "text/WideString.h"

#include <vector>

/* Each from its % to its letter, as parts of `format`; %% is one, too, and so is a % at the end, which is
 * never shown. */
std::vector<WideStringView> FindPlaceholders(WideStringView format);
