/* Replies to a search whose numbers are not what they ought to be. */
#include <set>

#include "hostile/HostileSearch.h"

namespace {

/* What a number is set to. */
std::set<int64_t> ValuesFor(const ReplyNumber& number) {
    std::set<int64_t> values = {INT32_MIN, -1, 0, 1, INT32_MAX};
    for (const int64_t limit : number.limits)
        values.insert({limit - 1, limit, limit + 1});
    return values;
}

std::string With(std::string bytes, size_t at, int64_t value) {
    return bytes.replace(at, 4, MapShopReply().Int32(value).bytes);
}

}  // namespace

TEST_F(HostileSearch, AnyNumberIsWrongInEveryPortion) {
    tally.emplace("search reply with a wrong number");
    const NumberedReply sample = SampleReply();
    const std::vector<Portions> all = SmallPortions(sample.reply.bytes.size());
    for (const ReplyNumber& number : sample.numbers) {
        for (const int64_t value : ValuesFor(number)) {
            SCOPED_TRACE(number.name + " " + std::to_string(value));
            const std::string bytes = With(sample.reply.bytes, number.at, value);
            for (const Portions& portions : all)
                Try({bytes}, portions);
            if (HasFailure()) return;
        }
    }
}

TEST_F(HostileSearch, AnyNumberIsWrongAndTheReplyEnds) {
    tally.emplace("search reply with a wrong number that ends, at each fourth byte");
    const NumberedReply sample = SampleReply();
    size_t offset = 0;
    for (const ReplyNumber& number : sample.numbers) {
        for (const int64_t value : ValuesFor(number)) {
            SCOPED_TRACE(number.name + " " + std::to_string(value));
            const std::string bytes = With(sample.reply.bytes, number.at, value);
            // What ends before the number ends as the sample does.
            for (size_t size = number.at + 1 + offset++ % 4; size < bytes.size(); size += 4)
                Try({std::string_view(bytes).substr(0, size)}, {});
            if (HasFailure()) return;
        }
    }
}

TEST_F(HostileSearch, TwoNumbersAreWrong) {
    tally.emplace("search reply with two wrong numbers");
    const NumberedReply sample = SampleReply();
    for (const ReplyNumber& number : sample.numbers) {
        for (const ReplyNumber& other : sample.numbers) {
            if (other.at <= number.at) continue;
            for (const int64_t value : {-1, 0, 1, 100000, 100001, INT32_MAX}) {
                SCOPED_TRACE(number.name + ", " + other.name + " " + std::to_string(value));
                for (const int64_t otherValue : {-1, 0, 1, 100000, 100001, INT32_MAX})
                    Try({With(With(sample.reply.bytes, number.at, value), other.at, otherValue)}, {});
                if (HasFailure()) return;
            }
        }
    }
}

TEST_F(HostileSearch, TextsHaveAnyLengthThatIsAnnounced) {
    tally.emplace("search reply with texts of every length");
    for (const int size :
         {0, 1, 98, 99, 100, 101, 198, 199, 200, 201, 998, 999, 1000, 1001, 99999, 100000, 100001}) {
        for (int field = 0; field < 3; ++field) {
            SCOPED_TRACE(std::to_string(size) + " units in text" + std::to_string(field + 1));
            WideString texts[3] = {TEXT("a"), TEXT("b"), TEXT("c")};
            texts[field] = WideString(static_cast<size_t>(size), TEXT('\xE9'));
            MapShopReply reply;
            reply.Int32(0).Int32(2).Map(texts[0], 1, texts[1], texts[2]);
            reply.Map(TEXT("next"), 2, TEXT("p"), TEXT("d")).Int32(3);
            for (const Portions& portions : {Portions{}, {255}, {7}})
                Try({reply.bytes}, portions);
            if (size <= 1001) Try({reply.bytes}, {1});
            if (HasFailure()) return;
        }
    }
}
