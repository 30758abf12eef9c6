#include "support/Contest.h"

#include <algorithm>
#include <stdexcept>

Contest::Contest(std::string_view row, size_t size, const std::string& folder) {
    workFolder = folder;
    std::string expected;
    for (const Entrant& entrant : Entrants()) {
        if (entrant.row->name != row) continue;
        Contestant contestant{entrant.contender, entrant.make(size)};
        const std::string outcome = contestant.work->Outcome();
        if (contestants.empty()) {
            expected = outcome;
            items = ItemsOf(*entrant.row, size);
            per = entrant.row->per;
        }
        if (outcome != expected || outcome.empty()) {
            const auto differing =
                std::mismatch(outcome.begin(), outcome.end(), expected.begin(), expected.end());
            const auto place = static_cast<size_t>(differing.first - outcome.begin());
            throw std::runtime_error(std::string(row) + ": " + std::string(entrant.contender) +
                                     " comes to another outcome, from byte " + std::to_string(place) +
                                     " on: " + outcome.substr(place, 60) + " | " +
                                     expected.substr(place, 60));
        }
        contestants.push_back(std::move(contestant));
    }
    if (contestants.empty()) throw std::runtime_error("there is no row " + std::string(row));
}

std::vector<const Row*> Rows() {
    std::vector<const Row*> rows;
    for (const Entrant& entrant : Entrants()) {
        if (rows.empty() || rows.back() != entrant.row) rows.push_back(entrant.row);
    }
    return rows;
}
