/* The least that a program of WinINet does for the library's requests: the same calls with the same flags,
 * read in the same pieces. Each function returns how many bytes of a reply have come; 0 also stands for a
 * failure. */
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Searches for all maps, and reads the reply in pieces of 256 bytes: into `kept`, which has room for
 * `capacity` bytes, or when that is null only to count them. */
DWORD BareSearch(BYTE* kept, DWORD capacity);

/* Downloads into `file`, in pieces of 4096 bytes. */
DWORD BareDownload(const WCHAR* file);

#ifdef __cplusplus
}
#endif
