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
 * texts that there are: one with a translation becomes obsolete, one without goes. Where `fresh` has no
 * translation and `old` none of the same text, that of one that differs in its ornaments alone (&, full stop,
 * colon, double quote) is a guess. A guess of `fresh` gives way to what is none in `old`. */
Catalogue Merge(const Catalogue& old, Catalogue fresh, bool isWhole, std::vector<MergeConflict>& conflicts);
