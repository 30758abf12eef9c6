#include "Platform.h"

#include "machine/Violations.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Device.h"
#include "machine/Allocations.h"

namespace {

Device::ViolationHook currentHook = nullptr;

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

Device::ViolationHook Device::SetViolationHook(ViolationHook hook) {
    return std::exchange(currentHook, hook);
}
