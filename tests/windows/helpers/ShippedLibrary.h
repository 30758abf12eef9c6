/* The DLL as applications get it: it lies beside the test program and is used through its exports alone. */
#pragma once

#include <vector>

#include "LMOnline.h"
#include "helpers/LoadedModule.h"

/* What an application sees of one search. */
struct SearchOutcome {
    std::vector<MapShopResult> results;
    int32_t finalValue = 0;
    bool gotHandle = false;
};

/* Loaded for as long as it lives. Throws std::runtime_error when the DLL or a function of it is missing. */
class ShippedLibrary {
    const LoadedModule module{L"OrvandeOnline.dll"};

public:
    /* A search from its beginning to its close. `items` is passed on as it is. */
    SearchOutcome Search(const void* items, int32_t count) const;

    /* A search for everything. */
    SearchOutcome Search() const { return Search(nullptr, 0); }

    const decltype(&LMMapShopSearch) mapShopSearch = module.Find("LMMapShopSearch");
    const decltype(&LMMapShopGetNext) mapShopGetNext = module.Find("LMMapShopGetNext");
    const decltype(&LMMapShopClose) mapShopClose = module.Find("LMMapShopClose");
    const decltype(&LMDownloadWebFileProgress) downloadWithProgress =
        module.Find("LMDownloadWebFileProgress");
    const decltype(&x77fc64c7) download = module.Find("x77fc64c7");
    const decltype(&xfa704a3f) readRange = module.Find("xfa704a3f");
};
