/* Row "map-entries": the map shop's reply, with `size` maps, is asked for and every map handed out as a
 * record of 2604 bytes. The network is read in pieces of 256 bytes; all records stay in memory together. */
#pragma once

#include <cstdint>
#include <string>

#include "LMOnline.h"
#include "platform/StubInternet.h"
#include "support/Rows.h"
#include "support/Sizes.h"

inline constexpr Row mapEntries{"map-entries", "entry", replySizes, growthSizes};

/* The bytes of a reply with so many maps: names of 10 to 30 units, paths of 20 to 50, descriptions of 40 to
 * 120. */
std::string MapReply(size_t entries);

/* Adds what a record says, to compare it. */
void AppendRecord(std::string& outcome, const MapShopResult& record);

/* `Search` has one function, Run(take), which calls `take` with each record and returns the reply's last
 * number. */
template <class Search>
class SearchWork final : public Work {
public:
    explicit SearchWork(size_t entries) : reply(MapReply(entries)) {}

    std::string Outcome() override {
        SetReply(reply);
        std::string outcome;
        const int32_t last = Search::Run([&](const MapShopResult& record) { AppendRecord(outcome, record); });
        return outcome + std::to_string(last);
    }

    void Do() override {
        SetReply(reply);
        int64_t sum = 0;
        const int32_t last = Search::Run([&](const MapShopResult& record) { sum += record.number; });
        total = sum + last;
    }

private:
    std::string reply;
    volatile int64_t total = 0;
};
