/* The device runtime's wide functions, for toolchains whose own wide functions work on larger units. They
 * have the device runtime's meaning: text is made of 16-bit units, in formats a plain %s is wide text and
 * %I64d a 64-bit integer, and paths are the device's. */
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <windows.h>

extern "C++" {
/* Opens a file of the device; modes "rb", "wb", "r" and "w". Null on failure. */
FILE* _wfopen(const WCHAR* path, const WCHAR* mode);

/* Formats into at most `count` units. Returns the number of units without the terminator; when it is exactly
 * `count`, no terminator is written. -1 when there are more: then `buffer` holds the first `count`, and no
 * terminator. */
int _vsnwprintf(WCHAR* buffer, size_t count, const WCHAR* format, va_list arguments);

/* Reads fields out of `text`. Returns how many were assigned, or EOF when the text ends before the first. */
int swscanf(const WCHAR* text, const WCHAR* format, ...);

/* The number of units before the terminator. */
size_t wcslen(const WCHAR* text);
}
