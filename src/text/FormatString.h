/* Bounded printf-style formatting into wide strings.
 *
 * Formats follow the device runtime's wide printf: %s and %c take wide text, %I64d a 64-bit integer. The
 * arguments must match the format, as for printf; `format` must not be null. A filled-in format that would be
 * longer than 999 units is cut there, without notice and without regard for surrogate pairs; an argument's
 * own NUL unit (%c of 0) ends the text as well. Only the resulting string is allocated. */
#pragma once

#include "text/WideString.h"

/* The format filled in: at most 999 units. */
WideString FormatString(const WCHAR* format, ...);

/* As FormatString; `arguments` is indeterminate afterwards, as after vprintf. */
WideString FormatStringV(const WCHAR* format, va_list arguments);

/* Adds the format filled in, at most 999 units, to the end of `text` and returns `text`. The arguments may
 * point into `text`. */
WideString& AppendFormat(WideString& text, const WCHAR* format, ...);

/* As AppendFormat; `arguments` is indeterminate afterwards, as after vprintf. */
WideString& AppendFormatV(WideString& text, const WCHAR* format, va_list arguments);
