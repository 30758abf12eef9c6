/* Windows CE, where it differs from the desktop that the headers describe: what it lacks or names otherwise,
 * and the functions of its C runtime that the toolchain's own headers do not declare. */
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdio.h>
#include <windows.h>
// The order matters: the headers below build on windows.h.
#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

// The shell's functions have no W at the end of their names.
#undef SHGetSpecialFolderPath
#undef ShellExecuteEx

extern "C" {
/* The pseudo handle of the running process; a constant on the device. */
inline HANDLE WINAPI GetCurrentProcess() {
    return reinterpret_cast<HANDLE>(uintptr_t{66});
}

BOOL WINAPI SHGetSpecialFolderPath(HWND owner, LPWSTR path, int folder, BOOL create);
BOOL WINAPI ShellExecuteEx(LPSHELLEXECUTEINFOW info);

/* These two as wideruntime.h describes them. */
FILE* _wfopen(const WCHAR* path, const WCHAR* mode);
int _vsnwprintf(WCHAR* buffer, size_t count, const WCHAR* format, va_list arguments);
}

// Later desktops have added fields to structures, and messages. These here must be as they were when the
// device's system was made: it refuses a structure of another size and ignores an unknown message.
static_assert(sizeof(SHELLEXECUTEINFOW) == 60);
static_assert(offsetof(MENUITEMINFOW, hbmpItem) == 44, "the device's structure ends where this field begins");
static_assert(sizeof(TBBUTTON) == 20);
static_assert(sizeof(TBBUTTONINFOW) == 32);
static_assert(TB_GETBUTTON == 0x417 && TB_BUTTONCOUNT == 0x418);
static_assert(TB_GETBUTTONINFOW == 0x43F && TB_SETBUTTONINFOW == 0x440);
