#include "Platform.h"

#include "machine/Violations.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "machine/Allocations.h"
#include "machine/DeviceMachine.h"

namespace {

DeviceMachine::ViolationHook currentHook = nullptr;

}  // namespace

void simulator::Violate(const std::string& what) {
    const OwnWork ownWork;
    if (currentHook != nullptr) {
        currentHook(what);
        return;
    }
    std::fprintf(stderr, "simulated handheld: %s\n", what.c_str());
    std::abort();
}

DeviceMachine::ViolationHook DeviceMachine::SetViolationHook(ViolationHook hook) {
    return std::exchange(currentHook, hook);
}
