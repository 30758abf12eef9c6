/* The placeholders of printf-style formats, told apart by the arguments that they read. */
#pragma once

#include "text/WideString.h"

/* Whether `format`, filled in with the arguments that `original` takes, reads nothing but these: the same
 * arguments in the same order and of the same types, or a beginning of them. Who has written `format` is not
 * trusted: a placeholder that reads another type takes a number for an address, and one too many reads what
 * is no argument.
 *
 *   same type     d, i, u, x, X and o; e, E, f, g and G; each of s, S, c, C and p only itself. A size before
 *                 the letter (h, l, w, L, I32, I64) has to be the same.
 *   never read    n, which writes through its argument; a width or precision * that is an argument; one of a
 *                 number above 20, the digits of 64 bits, because runtimes make numbers in buffers that a
 *                 longer one overruns; one of a text or character above 999, the most units of a message;
 *                 and whatever the runtime does not know.
 *   no argument   %%
 *
 * Two texts that are equal read the same, whatever is in them. */
bool ReadsArgumentsOf(const WCHAR* original, const WCHAR* format);
