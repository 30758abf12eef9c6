/* Reading of the library's own text files, line by line. */
#pragma once

#include "text/WideString.h"

/* Reads the next line that carries content into `line`: lines that are empty, hold only spaces and tabs, or
 * whose first other unit is # are passed over. The line comes as it is in the file, untrimmed, without its
 * end.
 *
 * A line ends at a line feed, at a byte 0xFF and at the end of the file; carriage returns and NUL bytes are
 * skipped wherever they are. Every other byte is one unit, sign-extended: 0xE9 becomes U+FFE9. Lines have no
 * greatest length.
 *
 * False when no such line is left, with `line` empty. A stream whose end-of-file or error indicator is set
 * has no lines left; what was read of a line before an error is delivered. False when `file` is null, with
 * `line` as it was. */
bool ReadContentLine(FILE* file, WideString& line);
