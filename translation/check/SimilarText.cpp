#include "check/SimilarText.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

/* How many characters have to be changed, added or left out. */
size_t Distance(WideStringView one, WideStringView other) {
    std::vector<size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t line = 1; line <= one.size(); ++line) {
        size_t diagonal = row[0];
        row[0] = line;
        for (size_t column = 1; column <= other.size(); ++column) {
            const size_t changed = diagonal + (one[line - 1] == other[column - 1] ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({changed, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

const ShownText* FindSimilarText(WideStringView text) {
    const ShownText* nearest = nullptr;
    size_t most = std::max(text.size() / 4, size_t{2});
    for (const ShownText& shown : AllShownTexts()) {
        const WideStringView known = shown.text;
        const size_t longer = std::max(known.size(), text.size());
        if (longer - std::min(known.size(), text.size()) > most) continue;
        const size_t distance = Distance(text, known);
        // Nothing is left of what has changed altogether.
        if (distance > most || distance >= longer || (nearest != nullptr && distance == most)) continue;
        nearest = &shown;
        most = distance;
    }
    return nearest;
}
