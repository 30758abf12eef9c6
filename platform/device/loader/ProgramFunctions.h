/* What only programs call (libraries, the console, the clock, text in other encodings), and formatting. */
#pragma once

#include "Platform.h"

/* These act as LoadLibraryW, FreeLibrary and GetProcAddressA do, also for an image that lies at a path of the
 * device. */
HMODULE WINAPI LoadImageAtPath(LPCWSTR path);
BOOL WINAPI FreeImage(HMODULE module);
void* WINAPI FindExport(HMODULE module, const char* name);

FILE* StandardStream(int number);
int PutLine(const char* text);
int PutByte(int letter);

/* These find their arguments as the device does (DeviceArguments.h). */
int PrintFormatted(const char* format, ...);
int FormatWide(WCHAR* buffer, size_t count, const WCHAR* format, va_list values);

/* Decimal numbers only. */
double NumberAt(const WCHAR* text, WCHAR** end);
