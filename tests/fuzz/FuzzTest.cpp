/* Every target, without sanitizers: what is kept for it, and for some seconds inputs that are made of it.
 *
 *   ORVANDE_FUZZ_SEED     the number that the inputs are made of, to see a failure once more
 *   ORVANDE_FUZZ_SECONDS  how long they are made for each target, 5 when it is not set
 *
 * An input that is too much for its target, and with it for this program, is left in a file, which the last
 * line names; kept in cases/NAME, it is run ever after. */
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "FuzzTarget.h"
#include "KeptInputs.h"
#include "Mutator.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned mostSecondsOfOneInput = 20;
constexpr uint64_t inputsBetweenLooksAtTheClock = 64;
constexpr uint64_t leastInputs = 100;

/* What a handler of signals needs, which may not ask for memory. */
std::string inputAtHand;
std::string fileOfFailure;

void Say(const char* text) {
    if (write(STDERR_FILENO, text, std::strlen(text)) < 0) _exit(1);
}

/* The program ends here, whatever the target was doing. */
extern "C" void KeepInput(int signal) {
    const int file = open(fileOfFailure.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const bool isKept = file >= 0 && write(file, inputAtHand.data(), inputAtHand.size()) ==
                                         static_cast<ssize_t>(inputAtHand.size());
    Say(signal == SIGALRM ? "An input takes too long" : "An input ends the program");
    Say(isKept ? ": " : ", and cannot be written to ");
    Say(fileOfFailure.c_str());
    Say("\n");
    _exit(1);
}

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
        fileOfFailure = fs::absolute("too-much-for-" + GetParam().name).string();
        for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGALRM})
            std::signal(signal, KeepInput);
    }

    void TearDown() override {
        alarm(0);
        for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGALRM})
            std::signal(signal, SIG_DFL);
    }

    void Run(const std::string& input) {
        inputAtHand = input;
        target->Run({reinterpret_cast<const uint8_t*>(input.data()), input.size()});
    }

    [[nodiscard]] static std::vector<std::string> Kept() {
        std::vector<std::string> inputs = ReadInputs(KeptUnder("corpus") / GetParam().name);
        for (std::string& input : ReadInputs(KeptUnder("cases") / GetParam().name))
            inputs.push_back(std::move(input));
        return inputs;
    }

private:
    const std::unique_ptr<FuzzTarget> target = GetParam().make();
};

std::string NameOf(const testing::TestParamInfo<NamedFuzzTarget>& info) {
    return info.param.name;
}

}  // namespace

TEST_P(Fuzz, HoldsForWhatIsKept) {
    const std::vector<std::string> inputs = Kept();
    EXPECT_FALSE(inputs.empty()) << "there is nothing in corpus/" << GetParam().name;
    alarm(mostSecondsOfOneInput);
    Run({});
    for (const std::string& input : inputs) {
        alarm(mostSecondsOfOneInput);
        Run(input);
    }
}

TEST_P(Fuzz, HoldsForWhatIsMadeOfIt) {
    const std::vector<std::string> inputs = Kept();
    const std::vector<std::string> words = ReadWords(KeptUnder("dictionaries") / (GetParam().name + ".dict"));
    Mutator mutator(inputs, words);
    std::printf("ORVANDE_FUZZ_SEED=%llu\n", static_cast<unsigned long long>(Seed()));
    std::fflush(stdout);
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    const auto end = begin + std::chrono::seconds(NumberFrom("ORVANDE_FUZZ_SECONDS", 5));
    uint64_t count = 0;
    for (; count % inputsBetweenLooksAtTheClock != 0 || Clock::now() < end; ++count) {
        if (count % inputsBetweenLooksAtTheClock == 0) alarm(mostSecondsOfOneInput);
        Run(mutator.Make(Seed(), count));
    }
    const std::chrono::duration<double> seconds = Clock::now() - begin;
    std::printf("%llu inputs, %.0f a second\n", static_cast<unsigned long long>(count),
                static_cast<double>(count) / seconds.count());
    EXPECT_GE(count, leastInputs) << "runs of this target take too long to find anything";
}

INSTANTIATE_TEST_SUITE_P(Targets, Fuzz, testing::ValuesIn(FuzzTargets()), NameOf);
