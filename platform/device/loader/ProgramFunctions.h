/* What only programs call: libraries, the console, the clock, text in other encodings. */
#pragma once

#include "Platform.h"

/* As LoadLibraryW and so on, also for the library's image where it lies on the device. */
HMODULE WINAPI LoadImageAtPath(LPCWSTR path);
BOOL WINAPI FreeImage(HMODULE module);
void* WINAPI FindExport(HMODULE module, const char* name);

FILE* StandardStream(int number);
int PutLine(const char* text);

/* Decimal numbers only. */
double NumberAt(const WCHAR* text, WCHAR** end);
