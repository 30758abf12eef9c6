/* Asks the map shop what it has in a box on the map, and prints it.
 *
 *     search [SOUTH WEST NORTH EAST]     in degrees; all maps of the shop without them
 *
 * Exit code: 0 the whole answer has been printed, 1 there was none or not all of it, 2 wrong arguments.
 *
 * For Windows and Wine, in the folder of this file (C++98 or later):
 *     i686-w64-mingw32-g++ -static -municode -I ../../include -o search.exe search.cpp libOrvandeOnline.dll.a
 * For Windows CE, with the ARM compiler of Visual Studio 2008 (this line has not been tried):
 *     cl /EHsc /D_WIN32_WCE=0x420 /DUNDER_CE /DARM /D_ARM_ /DUNICODE /D_UNICODE /I..\..\include search.cpp
 *        /link /subsystem:windowsce,4.20 /entry:mainWCRTStartup OrvandeOnline.lib coredll.lib corelibc.lib
 */
#include <windows.h>

#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>

#include "LMOnline.h"

namespace {

/* A search of the map shop, which is closed at the end of the object's life. */
class Search {
public:
    /* Asks for what the service's `count` items of 16 bytes name; for everything when there is none. */
    Search(const void* items, LMInt32 count) : search(LMMapShopSearch(items, count)), error(GetLastError()) {}
    ~Search() { Close(); }

    /* Why the results are not all; 0 when they are. */
    DWORD Error() const { return error; }

    /* False, and `map` stays as it was, when there are no more. */
    bool Next(MapShopResult& map) { return LMMapShopGetNext(search, &map) != 0; }

    /* The number with which the answer ended. There are no results afterwards. */
    LMInt32 Close() {
        const LMInt32 number = LMMapShopClose(search);
        search = NULL;
        return number;
    }

private:
    Search(const Search&);
    Search& operator=(const Search&);

    MapShopSearch* search;
    const DWORD error;
};

/* Prints text of any script, as UTF-8: the C runtime's "%ls" stops at the first letter that its locale does
 * not have. */
void PrintText(const WCHAR* text) {
    char bytes[3 * 1000 + 1];  // the longest text of a map, with 3 bytes for each code unit
    if (WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, NULL, NULL) > 0) printf("%s", bytes);
}

/* A box in units of 1e-5 degrees, as the service takes it. */
struct Box {
    explicit Box(wchar_t** degrees) {
        for (int i = 0; i < 4; ++i) {
            const double units = wcstod(degrees[i], NULL) * 100000;
            edges[i] = static_cast<LMInt32>(units < 0 ? units - 0.5 : units + 0.5);
        }
    }

    LMInt32 edges[4];
};

int Print(Search& search) {
    MapShopResult map;
    while (search.Next(map)) {
        PrintText(map.text1);
        printf(", %ld KB, ", static_cast<long>(map.number));
        PrintText(map.text2);
        printf("\n");
    }
    printf("%ld maps in the shop\n", static_cast<long>(search.Close()));
    if (search.Error() == 0) return 0;
    printf("this is not all: error 0x%08lX\n", static_cast<unsigned long>(search.Error()));
    return 1;
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
#ifndef UNDER_CE
    SetConsoleOutputCP(CP_UTF8);
#endif
    if (count == 5) {
        const Box box(values + 1);
        Search search(box.edges, 1);
        return Print(search);
    }
    if (count == 1) {
        Search search(NULL, 0);
        return Print(search);
    }
    printf("usage: search [SOUTH WEST NORTH EAST]\n");
    return 2;
}
