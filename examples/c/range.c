/* Reads a part of a file and prints its bytes in hexadecimal.
 *
 *     range HOST PATH OFFSET LENGTH      LENGTH: 1 to 4096
 *     range online.orvande.example /maps/corsica.map 0 64
 *
 * Exit code: 0 the part has been printed, 1 it could not be had, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file:
 *     i686-w64-mingw32-gcc -municode -I ../../include -o range.exe range.c libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include range.c
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <wchar.h>

#include "LMOnline.h"

#define MOST_BYTES 4096

static void PrintBytes(const unsigned char* bytes, LMInt32 count) {
    LMInt32 i;
    for (i = 0; i < count; ++i)
        printf("%02x%s", bytes[i], i % 16 == 15 || i + 1 == count ? "\n" : " ");
}

int wmain(int count, wchar_t** values) {
    unsigned char bytes[MOST_BYTES];
    LMInt64 offset;
    LMInt32 length;
    LMInt32 result;
    DWORD error;

    offset = count == 5 ? (LMInt64)wcstod(values[3], NULL) : 0;
    length = count == 5 ? (LMInt32)wcstod(values[4], NULL) : 0;
    if (offset < 0 || length < 1 || length > MOST_BYTES) {
        printf("usage: range HOST PATH OFFSET LENGTH (LENGTH: 1 to %d)\n", MOST_BYTES);
        return 2;
    }
    result = LMReadWebFileRange(values[1], values[2], offset, length, bytes, NULL, NULL);
    error = GetLastError(); /* at once: any other call may change it */
    if (result == length) {
        PrintBytes(bytes, length);
        return 0;
    }
    if (error == LM_ERROR_REPLY_ENDED)
        printf("the file ends before the part does\n");
    else if (LM_ERROR_KIND(error) == LM_ERROR_HTTP_STATUS)
        printf("the server refused: HTTP status %lu\n", (unsigned long)LM_ERROR_STATUS(error));
    else
        printf("failed: error 0x%08lX\n", (unsigned long)error);
    return 1;
}
