/* Counts what the contenders of one row at one size take from the heap.
 *
 *   orvande-allocations ROW SIZE FOLDER   a line for each: how often, at most how many bytes, contender */
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "allocations/CountedHeap.h"
#include "support/Contest.h"

namespace {

void Run(const std::vector<std::string>& arguments) {
    if (arguments.size() != 4) throw std::runtime_error("usage: orvande-allocations ROW SIZE FOLDER");
    const Contest contest(arguments[1], std::stoul(arguments[2]), arguments[3]);
    std::printf("items %zu\nper %s\n", contest.items, contest.per.c_str());
    for (const Contestant& contestant : contest.contestants) {
        // The first time fills caches that last.
        contestant.work->Do();
        BeginHeapUse();
        contestant.work->Do();
        const HeapUse use = CurrentHeapUse();
        std::printf("%zu %zu %s\n", use.calls, use.peak, std::string(contestant.name).c_str());
    }
}

}  // namespace

int main(int count, char** arguments) {
    try {
        Run({arguments, arguments + count});
        return 0;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "orvande-allocations: %s\n", problem.what());
        return 1;
    }
}
