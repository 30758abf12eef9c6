#include "machine/Failures.h"

#include <string>
#include <vector>

#include "machine/DeviceMachine.h"
#include "machine/Journal.h"
#include "machine/Violations.h"

namespace simulator {

namespace {

struct Order {
    std::string function;
    size_t callsBefore = 0;
    DWORD error = 0;
    Failing failing = Failing::Once;
    bool isDone = false;
};

struct Failures {
    std::vector<Order> orders;
    size_t delivered = 0;
};

Failures& Current() {
    static Failures& failures = *new Failures;
    return failures;
}

bool Applies(Order& order) {
    if (order.isDone) return false;
    if (order.callsBefore > 0) {
        --order.callsBefore;
        return false;
    }
    order.isDone = order.failing == Failing::Once;
    return true;
}

}  // namespace

std::optional<DWORD> OrderedFailure(std::string_view function) {
    if (Current().orders.empty()) return std::nullopt;
    std::optional<DWORD> error;
    for (Order& order : Current().orders) {
        if (order.function == function && Applies(order)) error = order.error;
    }
    if (error) ++Current().delivered;
    return error;
}

void ResetFailures() {
    Current() = Failures{};
}

}  // namespace simulator

void DeviceMachine::FailCall(std::string_view function, size_t n, DWORD error, Failing failing) {
    if (!simulator::IsSimulatedFunction(function)) {
        simulator::Violate("FailCall names " + std::string(function) + ", which is not simulated");
        return;
    }
    if (n == 0) {
        simulator::Violate("FailCall counts calls from 1");
        return;
    }
    simulator::Current().orders.push_back({std::string(function), n - 1, error, failing});
}

size_t DeviceMachine::FailedCalls() const {
    return simulator::Current().delivered;
}

void DeviceMachine::StopFailing() {
    simulator::Current().orders.clear();
}
