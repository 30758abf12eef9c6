#include "helpers/ShippedLibrary.h"

SearchOutcome ShippedLibrary::Search(const void* items, int32_t count) const {
    SearchOutcome outcome;
    auto* const search = mapShopSearch(items, count);
    outcome.gotHandle = search != nullptr;
    MapShopResult result;
    while (mapShopGetNext(search, &result) != 0)
        outcome.results.push_back(result);
    outcome.finalValue = mapShopClose(search);
    return outcome;
}
