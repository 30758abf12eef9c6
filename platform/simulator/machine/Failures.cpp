#include "machine/Failures.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "machine/Allocations.h"
#include "machine/CallWatch.h"
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

CallWatch* currentWatch = nullptr;

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
    std::optional<DWORD> error;
    if (currentWatch != nullptr) error = currentWatch->Take(function);
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

CallWatch::CallWatch(size_t n, DWORD error, Failing failing, std::vector<std::string_view> spared)
    : firstFailing_(n), error_(error), failing_(failing), spared_(std::move(spared)) {
    if (simulator::currentWatch != nullptr) {
        simulator::Violate("a CallWatch begins while another one is on");
        return;
    }
    simulator::currentWatch = this;
}

CallWatch::~CallWatch() {
    Stop();
}

void CallWatch::Stop() {
    if (simulator::currentWatch == this) simulator::currentWatch = nullptr;
}

bool CallWatch::IsSpared(std::string_view function) const {
    return std::ranges::find(spared_, function) != spared_.end();
}

std::optional<DWORD> CallWatch::Take(std::string_view function) {
    functions_.push_back(function);
    const size_t number = functions_.size();
    const bool fails = failing_ == Failing::FromThereOn ? number >= firstFailing_ : number == firstFailing_;
    if (firstFailing_ == 0 || !fails || IsSpared(function)) return std::nullopt;
    failed_.push_back({number, simulator::HasMemoryFailed()});
    return error_;
}

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
