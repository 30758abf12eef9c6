/* The DLL as applications get it: it lies beside the test program and is used through its exports alone. */
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LMOnline.h"
#include "Platform.h"

/* What an application sees of one search. */
struct SearchOutcome {
    std::vector<MapShopResult> results;
    int32_t finalValue = 0;
    bool gotHandle = false;
};

/* Loaded for as long as it lives. Throws std::runtime_error when the DLL or a function of it is missing. */
class ShippedLibrary {
public:
    ShippedLibrary();
    ~ShippedLibrary();
    ShippedLibrary(const ShippedLibrary&) = delete;
    ShippedLibrary& operator=(const ShippedLibrary&) = delete;

    /* A search from its beginning to its close. `items` is passed on as it is. */
    SearchOutcome Search(const void* items, int32_t count) const;

    /* A search for everything. */
    SearchOutcome Search() const { return Search(nullptr, 0); }

    decltype(&LMMapShopSearch) mapShopSearch = nullptr;
    decltype(&LMMapShopGetNext) mapShopGetNext = nullptr;
    decltype(&LMMapShopClose) mapShopClose = nullptr;
    decltype(&LMDownloadWebFileProgress) downloadWithProgress = nullptr;
    decltype(&x77fc64c7) download = nullptr;
    decltype(&xfa704a3f) readRange = nullptr;

private:
    HMODULE module = nullptr;
};

/* The folder of the test program, without a separator at its end. */
std::wstring ProgramFolder();

/* Text in ASCII, widened. */
std::wstring Widened(std::string_view text);
