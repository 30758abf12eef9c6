/* The exported functions: arguments are checked, exceptions are stopped, the work is done elsewhere. */
#include "Platform.h"

#include <new>

#include "LMOnline.h"
#include "frame/Contained.h"
#include "mapshop/MapShopSearch.h"

MapShopSearch* LM_CALL LMMapShopSearch(const void* items, int32_t count) {
    auto* const search = new (std::nothrow) MapShopSearch;
    if (search == nullptr) return nullptr;
    // When memory runs out on the way, the results already read are kept.
    if (MapShopSearch::AreItems(items, count)) RunContained([&] { search->Run(items, count); });
    return search;
}

int32_t LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record) {
    if (search == nullptr || record == nullptr) return 0;
    return search->GetNext(*record) ? 1 : 0;
}

int32_t LM_CALL LMMapShopClose(MapShopSearch* search) {
    if (search == nullptr) return 0;
    const int32_t finalValue = search->FinalValue();
    delete search;
    return finalValue;
}
