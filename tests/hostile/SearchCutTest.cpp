/* Replies to a search that end anywhere, in portions of every kind. */
#include "hostile/HostileSearch.h"

namespace {

class CutSearch : public HostileSearch {
protected:
    const std::string whole = SampleReply().reply.bytes;

    [[nodiscard]] Arrival First(size_t size) const { return {std::string_view(whole).substr(0, size)}; }
};

}  // namespace

TEST_F(CutSearch, EndsAtEveryByteInEveryPortion) {
    tally.emplace("search reply that ends");
    const std::vector<Portions> all = SmallPortions(whole.size());
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        for (const Portions& portions : all)
            Try(First(size), portions);
    }
}

TEST_F(CutSearch, IsResetAtEveryByteInEveryPortion) {
    tally.emplace("search reply that is reset");
    const std::vector<Portions> all = SmallPortions(whole.size());
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        Arrival arrival = First(size);
        arrival.atEnd = 10054;
        for (const Portions& portions : all)
            Try(arrival, portions);
    }
}

TEST_F(CutSearch, IsARefusalThatEndsAtEveryByte) {
    tally.emplace("search reply with an HTTP status that refuses");
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        Arrival arrival = First(size);
        arrival.httpStatus = 404;
        Try(arrival, {});
    }
}

TEST_F(CutSearch, IsDividedOnceAndEndsAtEveryByte) {
    tally.emplace("search reply that ends and is divided at each third byte");
    for (size_t size = 2; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        for (size_t first = 1 + size % 3; first < size; first += 3)
            Try(First(size), {first, whole.size()});
    }
}

TEST_F(CutSearch, BringsNothingBeforeAnyByteAndGoesOn) {
    tally.emplace("search reply of which one read fails");
    for (size_t gap = 0; gap < whole.size() && !HasFailure(); ++gap) {
        SCOPED_TRACE(gap);
        Arrival arrival = First(whole.size());
        arrival.gapAt = gap;
        arrival.atGap = ERROR_INTERNET_TIMEOUT;
        device.FailCall("InternetReadFile", gap + 1, ERROR_INTERNET_TIMEOUT);
        Try(arrival, {1});
        device.StopFailing();
    }
}
