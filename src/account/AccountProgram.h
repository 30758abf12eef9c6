/* The service's program for accounts. */
#pragma once

#include "Platform.h"

inline constexpr WCHAR accountProgram[] = TEXT("cgi-bin/licapp.cgi");
