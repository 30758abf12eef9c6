/* Measures the contenders of one row at one size. Each row has a process of its own, so that what one leaves
 * behind in a peer's caches does not slow down another.
 *
 *   orvande-benchmarks list                                rows and sizes, "growth" behind those for plots
 *   orvande-benchmarks counts ROW SIZE FOLDER              under callgrind: a dump for each contender
 *   orvande-benchmarks times ROW SIZE FOLDER [OPTION ...]  Google Benchmark, with its options */
#include <benchmark/benchmark.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Contest.h"

namespace {

int List() {
    for (const Row* row : Rows()) {
        for (const size_t size : row->sizes)
            std::printf("%s %zu\n", std::string(row->name).c_str(), size);
        for (const size_t size : row->growth)
            std::printf("%s %zu growth\n", std::string(row->name).c_str(), size);
    }
    return 0;
}

void Count(const Contest& contest) {
    for (const Contestant& contestant : contest.contestants) {
        const std::string name(contestant.name);
        contestant.work->Do();
        CALLGRIND_START_INSTRUMENTATION;
        CALLGRIND_ZERO_STATS;
        contestant.work->Do();
        CALLGRIND_DUMP_STATS_AT(name.c_str());
        CALLGRIND_STOP_INSTRUMENTATION;
    }
    std::printf("items %zu\nper %s\n", contest.items, contest.per.c_str());
}

/* One contender, as Google Benchmark sees it. */
class TimedWork final : public benchmark::Fixture {
public:
    explicit TimedWork(const Contestant& contestant) : work(*contestant.work) {
        SetName(std::string(contestant.name).c_str());
        Unit(benchmark::kNanosecond);
    }

    void BenchmarkCase(benchmark::State& state) override {
        for ([[maybe_unused]] auto step : state)
            work.Do();
    }

private:
    Work& work;
};

void Time(const Contest& contest, std::vector<char*> arguments) {
    auto count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    for (const Contestant& contestant : contest.contestants) {
        // It belongs to the list that it is put into.
        benchmark::internal::RegisterBenchmarkInternal(new TimedWork(contestant));
    }
    benchmark::AddCustomContext("items", std::to_string(contest.items));
    benchmark::AddCustomContext("per", contest.per);
    benchmark::RunSpecifiedBenchmarks();
}

int Run(const std::vector<char*>& arguments) {
    const std::string mode = arguments.size() > 1 ? arguments[1] : "";
    if (mode == "list") return List();
    if (arguments.size() < 5) throw std::runtime_error("usage: orvande-benchmarks MODE ROW SIZE FOLDER");
    const Contest contest(arguments[2], std::stoul(arguments[3]), arguments[4]);
    if (mode == "counts") {
        Count(contest);
    } else {
        std::vector<char*> rest(arguments.begin() + 4, arguments.end());
        rest.front() = arguments.front();
        Time(contest, rest);
    }
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    try {
        return Run({arguments, arguments + count});
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "orvande-benchmarks: %s\n", problem.what());
        return 1;
    }
}
