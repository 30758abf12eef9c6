#include "Search.h"

#include <LMOnline.h>
#include <LMOnlineVersion.h>

int32_t SearchShop(int32_t* results) {
    MapShopSearch* const search = LMMapShopSearch(0, 0);
    static MapShopResult map;
    *results = 0;
    while (LMMapShopGetNext(search, &map))
        ++*results;
    return LMMapShopClose(search);
}
