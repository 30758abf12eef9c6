#include <algorithm>
#include <utility>

#include "texts/Compositions.h"

namespace {

/* The one character, or 0. */
WCHAR Composed(WCHAR letter, WCHAR accent) {
    const std::span<const Composition> all = AllCompositions();
    const std::pair wanted(letter, accent);
    const auto pairOf = [](const Composition& each) { return std::pair(each.letter, each.accent); };
    const auto found = std::ranges::lower_bound(all, wanted, {}, pairOf);
    return found != all.end() && pairOf(*found) == wanted ? found->both : WCHAR{0};
}

}  // namespace

bool IsAccent(WCHAR unit) {
    return unit >= 0x300 && unit <= 0x36F;
}

WideString ComposedText(WideStringView text) {
    WideString composed;
    size_t letter = 0;  // that accents belong to
    for (const WCHAR unit : text) {
        if (!IsAccent(unit)) letter = composed.size();
        const WCHAR both =
            IsAccent(unit) && letter < composed.size() ? Composed(composed[letter], unit) : WCHAR{0};
        if (both == 0)
            composed += unit;
        else
            composed[letter] = both;
    }
    return composed;
}
