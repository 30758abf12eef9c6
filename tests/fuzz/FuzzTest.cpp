/* Every target, without sanitizers: what is kept for it, and for some seconds inputs that are made of it.
 *
 *   ORVANDE_FUZZ_SEED     the number that the inputs are made of, to see a failure once more
 *   ORVANDE_FUZZ_SECONDS  how long they are made for each target, 5 when it is not set
 *
 * An input that is too much for its target, and with it for this program, is left in a file, which the last
 * line names; kept in cases/NAME, it is run ever after. */
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "FailureKeeper.h"
#include "FuzzTarget.h"
#include "KeptInputs.h"
#include "Mutator.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr unsigned mostSecondsOfOneInput = 20;
constexpr uint64_t inputsBetweenLooksAtTheClock = 64;
constexpr uint64_t leastInputs = 100;

uint64_t NumberFrom(const char* name, uint64_t otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 0);
}

uint64_t Seed() {
    static const uint64_t seed = NumberFrom("ORVANDE_FUZZ_SEED", std::random_device()());
    return seed;
}

fs::path KeptUnder(const char* name) {
    return fs::path(ORVANDE_FUZZ_FOLDER) / name;
}

class Fuzz : public testing::TestWithParam<NamedFuzzTarget> {
protected:
    void SetUp() override {
        ASSERT_FALSE(inputs.empty()) << "there is nothing in corpus/" << GetParam().name;
    }

    void Run(const std::string& input) {
        keeper.Try(input);
        target->Run({reinterpret_cast<const uint8_t*>(input.data()), input.size()});
    }

    const std::vector<std::string> inputs = Kept();
    const std::vector<std::string> words = ReadWords(KeptUnder("dictionaries") / (GetParam().name + ".dict"));

private:
    static std::vector<std::string> Kept() {
        std::vector<std::string> kept = ReadInputs(KeptUnder("corpus") / GetParam().name);
        for (std::string& input : ReadInputs(KeptUnder("cases") / GetParam().name))
            kept.push_back(std::move(input));
        return kept;
    }

    FailureKeeper keeper{fs::absolute("too-much-for-" + GetParam().name).string()};
    const std::unique_ptr<FuzzTarget> target = GetParam().make();
};

std::string NameOf(const testing::TestParamInfo<NamedFuzzTarget>& info) {
    return info.param.name;
}

}  // namespace

TEST_P(Fuzz, HoldsForWhatIsKept) {
    FailureKeeper::GiveSeconds(mostSecondsOfOneInput);
    Run({});
    for (const std::string& input : inputs)
        Run(input);
}

TEST_P(Fuzz, HoldsForWhatIsMadeOfIt) {
    Mutator mutator(inputs, words);
    std::printf("ORVANDE_FUZZ_SEED=%llu\n", static_cast<unsigned long long>(Seed()));
    std::fflush(stdout);
    const Clock::time_point begin = Clock::now();
    const auto end = begin + std::chrono::seconds(NumberFrom("ORVANDE_FUZZ_SECONDS", 5));
    uint64_t count = 0;
    for (; count < leastInputs || count % inputsBetweenLooksAtTheClock != 0 || Clock::now() < end; ++count) {
        if (count % inputsBetweenLooksAtTheClock == 0) FailureKeeper::GiveSeconds(mostSecondsOfOneInput);
        Run(mutator.Make(Seed(), count));
    }
    const std::chrono::duration<double> seconds = Clock::now() - begin;
    std::printf("%llu inputs, %.0f a second\n", static_cast<unsigned long long>(count),
                static_cast<double>(count) / seconds.count());
}

INSTANTIATE_TEST_SUITE_P(Targets, Fuzz, testing::ValuesIn(FuzzTargets()), NameOf);
