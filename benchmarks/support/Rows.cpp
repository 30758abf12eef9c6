#include "support/Rows.h"

#include <algorithm>
#include <tuple>

std::string workFolder;

namespace {

std::vector<Entrant>& Entered() {
    static std::vector<Entrant> entered;
    return entered;
}

}  // namespace

Enter::Enter(const Row& row, std::string_view contender, WorkMaker make) {
    Entered().push_back({&row, contender, make});
}

std::vector<Entrant> Entrants() {
    std::vector<Entrant> sorted = Entered();
    std::sort(sorted.begin(), sorted.end(), [](const Entrant& left, const Entrant& right) {
        const auto place = [](const Entrant& entrant) {
            return std::make_tuple(entrant.row->name, entrant.contender != ownName, entrant.contender);
        };
        return place(left) < place(right);
    });
    return sorted;
}
