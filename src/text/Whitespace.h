/* Trimming of wide text. */
#pragma once

#include "text/WideString.h"

/* `text` without the spaces, tabs, line feeds and carriage returns at both of its ends. No other unit counts
 * as white space. */
WideStringView WithoutOuterWhitespace(WideStringView text);

/* Removes every space, tab, line feed and carriage return from both ends of `text` and returns `text`. No
 * other unit counts as white space, and none inside the text is touched. */
WideString& TrimWhitespace(WideString& text);
