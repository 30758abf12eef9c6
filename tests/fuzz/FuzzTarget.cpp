#include "FuzzTarget.h"

#include <cstdio>
#include <cstdlib>
#include <ostream>

namespace {

// Files in memory: a disk may take milliseconds for one that is written anew.
const bool areFilesInMemory = setenv("TMPDIR", "/dev/shm", 0) == 0;

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
