#include "FuzzTarget.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <ostream>

namespace {

// Files in memory: a disk may take milliseconds for one that is written anew.
constexpr const char* memory = "/dev/shm";
const bool areFilesInMemory = std::filesystem::is_directory(memory) && setenv("TMPDIR", memory, 0) == 0;

}  // namespace

std::vector<NamedFuzzTarget>& FuzzTargets() {
    static std::vector<NamedFuzzTarget> targets;
    return targets;
}

void PrintTo(const NamedFuzzTarget& target, std::ostream* out) {
    *out << target.name;
}

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "This does not hold: %s\n", what);
    std::abort();
}
