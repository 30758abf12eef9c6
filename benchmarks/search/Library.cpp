/* The library, through the functions that it exports. */
#include "search/SearchRow.h"

namespace {

struct Library {
    template <class Take>
    static int32_t Run(Take take) {
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        MapShopResult record;
        while (LMMapShopGetNext(search, &record) != 0)
            take(record);
        return LMMapShopClose(search);
    }
};

const Enter entered(mapEntries, ownName, MakeWork<SearchWork<Library>>);

}  // namespace
