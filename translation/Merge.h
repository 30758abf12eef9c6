/* Two catalogues made one. */
#pragma once

#include <vector>

#include "files/Catalogue.h"

/* A text that both have translated, each in its way. */
struct MergeConflict {
    size_t oldLine = 0;
    size_t newLine = 0;
    WideString text;
};

/* The entries of `fresh` in their order, each with its translation, or with that of `old` where it has none.
 * What translators have noted in `old` is kept, once.
 *
 * A text that only `old` has is kept behind them when `isWhole` does not hold. When it holds, `fresh` has all
 * texts that there are: one with a translation becomes obsolete, one without goes. Where `fresh` has a text
 * with ornaments (&, full stop, colon, double quote) and no translation, that of the text without them is a
 * guess, as it is for the library. */
Catalogue Merge(const Catalogue& old, Catalogue fresh, bool isWhole, std::vector<MergeConflict>& conflicts);
