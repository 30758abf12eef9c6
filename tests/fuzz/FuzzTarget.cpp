#include "FuzzTarget.h"

#include <cstdio>
#include <cstdlib>

std::vector<NamedFuzzTarget>& FuzzTargets() {
    static std::vector<NamedFuzzTarget> targets;
    return targets;
}

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "This does not hold: %s\n", what);
    std::abort();
}
