/* The exported functions: arguments are checked, exceptions are stopped, the work is done elsewhere. */
#include "Platform.h"

#include <new>

#include "LMOnline.h"
#include "frame/Contained.h"
#include "mapshop/MapShopSearch.h"

namespace {

MapShopSearch* SearchOf(LMMapShopHandle handle) {
    return reinterpret_cast<MapShopSearch*>(handle);
}

}  // namespace

LMMapShopHandle LM_CALL LMMapShopSearch(const void* items, int32_t count) {
    auto* const search = new (std::nothrow) MapShopSearch;
    if (search == nullptr) return nullptr;
    // When memory runs out on the way, the results already read are kept.
    if (MapShopSearch::AreItems(items, count)) RunContained([&] { search->Run(items, count); });
    return reinterpret_cast<LMMapShopHandle>(search);
}

int32_t LM_CALL LMMapShopGetNext(LMMapShopHandle handle, LMMapShopResult* record) {
    if (handle == nullptr || record == nullptr) return 0;
    return SearchOf(handle)->GetNext(*record) ? 1 : 0;
}

int32_t LM_CALL LMMapShopClose(LMMapShopHandle handle) {
    if (handle == nullptr) return 0;
    const int32_t finalValue = SearchOf(handle)->FinalValue();
    delete SearchOf(handle);
    return finalValue;
}
