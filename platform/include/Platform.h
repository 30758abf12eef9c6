/* The platform's interface as the library sees it: the only file that includes platform headers.
 *
 * Whoever needs a platform type or function includes this header before any other, because the desktop
 * compiler's C++ headers would otherwise choose their own wide printf, in which %s means narrow text.
 *
 * Everywhere: WCHAR is a 16-bit code unit, TEXT("...") makes literals of it, DWORD and LONG have 32 bits, and
 * the wide runtime functions have the device runtime's meaning (%s is wide text, %I64d has 64 bits). */
#pragma once

#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif

#ifdef __MINGW32__
#include <_mingw.h>
#undef __USE_MINGW_ANSI_STDIO
#define __USE_MINGW_ANSI_STDIO 0
#endif
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <wchar.h>

#include <windows.h>
// The order matters: the headers below build on windows.h.
#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>
#include <wininet.h>

#include "aygshell.h"
#include "connmgr.h"

#ifdef __MINGW32__
// The desktop's runtime has all that the library calls.
#elif WCHAR_MAX == 0xFFFF
#include "windowsce.h"
#else
#include "wideruntime.h"
#endif

static_assert(sizeof(WCHAR) == 2, "text is UTF-16 everywhere");
static_assert(sizeof(DWORD) == 4 && sizeof(LONG) == 4, "the platform's integers have 32 bits");
