/* What all contenders ask for. */
#pragma once

#include <windows.h>

/* The host that the library is built for, and the path of the file that is downloaded. */
static const WCHAR transferHost[] = L"online.orvande.example";
static const WCHAR transferPath[] = L"/maps/benchmark.map";
