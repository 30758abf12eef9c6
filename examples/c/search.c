/* Asks the map shop what it has in a box on the map, and prints it.
 *
 *     search [SOUTH WEST NORTH EAST]     in degrees; all maps of the shop without them
 *
 * Exit code: 0 the whole answer has been printed, 1 there was none or not all of it, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file:
 *     i686-w64-mingw32-gcc -municode -I ../../include -o search.exe search.c libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include search.c
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>

#include "LMOnline.h"

/* Prints text of any script, as UTF-8: the C runtime's "%ls" stops at the first letter that its locale does
 * not have. */
static void PrintText(const WCHAR* text) {
    char bytes[3 * 1000 + 1]; /* the longest text of a map, with 3 bytes for each code unit */
    if (WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, NULL, NULL) > 0) printf("%s", bytes);
}

/* Reads a box from four numbers in degrees; the service takes it in units of 1e-5 degrees. */
static void ReadBox(wchar_t** degrees, LMInt32* box) {
    int i;
    for (i = 0; i < 4; ++i) {
        const double units = wcstod(degrees[i], NULL) * 100000;
        box[i] = (LMInt32)(units < 0 ? units - 0.5 : units + 0.5);
    }
}

int wmain(int count, wchar_t** values) {
    LMInt32 box[4];
    MapShopSearch* search;
    MapShopResult map;
    DWORD error;

#ifndef UNDER_CE
    SetConsoleOutputCP(CP_UTF8);
#endif
    if (count == 5) {
        ReadBox(values + 1, box);
        search = LMMapShopSearch(box, 1);
    } else if (count == 1) {
        search = LMMapShopSearch(NULL, 0);
    } else {
        printf("usage: search [SOUTH WEST NORTH EAST]\n");
        return 2;
    }
    error = GetLastError(); /* at once: any other call may change it */

    while (LMMapShopGetNext(search, &map)) {
        PrintText(map.text1);
        printf(", %ld KB, ", (long)map.number);
        PrintText(map.text2);
        printf("\n");
    }
    printf("%ld maps in the shop\n", (long)LMMapShopClose(search));
    if (error == 0) return 0;
    printf("this is not all: error 0x%08lX\n", (unsigned long)error);
    return 1;
}
