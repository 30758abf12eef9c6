/* A program in C, linked with the DLL's import library. Prints a search's results and its final value. */
#include <stdio.h>

#include "LMOnline.h"

int main(void) {
    MapShopSearch* const search = LMMapShopSearch(NULL, 0);
    MapShopResult map;
    while (LMMapShopGetNext(search, &map)) {
        printf("%ls|%ld|%ls|%ls\n", map.text1, (long)map.number, map.text2, map.text3);
    }
    printf("%ld\n", (long)LMMapShopClose(search));
    return 0;
}
