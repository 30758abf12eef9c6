#include "Torturer.h"

#include <algorithm>
#include <cstdio>

#include "JournalOrder.h"
#include "support/Causes.h"
#include "user/Scripts.h"
#include "user/User.h"

namespace {

// No flow shows more boxes than that; the user answers OK to them.
constexpr int mostBoxes = 4;

std::vector<std::string>& Violations() {
    static std::vector<std::string> violations;
    return violations;
}

std::string HexText(DWORD number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(number));
    return text;
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text)
        narrow += unit < 0x80 && unit != u'\n' ? static_cast<char>(unit) : ' ';
    return narrow;
}

bool Matches(std::string_view outcome, std::string_view stated) {
    const size_t star = stated.find('*');
    if (star == std::string_view::npos) return outcome == stated;
    return outcome.size() + 1 >= stated.size() && outcome.starts_with(stated.substr(0, star)) &&
           outcome.ends_with(stated.substr(star + 1));
}

}  // namespace

std::string Flow::ErrorText(DWORD error) {
    return error < 100000 ? std::to_string(error) : HexText(error);
}

std::string_view NameOf(Mode mode) {
    switch (mode) {
        case Mode::Call:
            return "EachCall";
        case Mode::CallsFromThere:
            return "EachCallAndAllAfterIt";
        case Mode::Allocation:
            return "EachAllocation";
        case Mode::AllocationsFromThere:
            return "EachAllocationAndAllAfterIt";
        case Mode::Pair:
            return "EachCallWithEachAllocation";
    }
    return "";
}

Torturer::Torturer(const FlowRow& row) : row_(row), flow_(row_.make()) {
    Violations().clear();
    Device& device = Device::Current();
    device.SetViolationHook([](const std::string& what) { Violations().push_back(what); });
    device.BeginTest();
    flow_->SetUp();
}

Torturer::~Torturer() {
    Device::Current().EndTest();
    Device::Current().SetViolationHook(nullptr);
}

void Torturer::Count() {
    RunWith({});
}

Totals Torturer::RunAll(Mode mode) {
    Totals totals;
    const auto run = [&](const Plan& plan) {
        if (complaints_.size() >= mostComplaints) return;
        ++totals.runs;
        totals.failures += RunWith(plan);
    };
    const bool isFromThere = mode == Mode::CallsFromThere || mode == Mode::AllocationsFromThere;
    const Failing failing = isFromThere ? Failing::FromThereOn : Failing::Once;
    if (mode == Mode::Call || mode == Mode::CallsFromThere) {
        for (const size_t call : CallsToFail())
            run({call, 0, failing});
    } else if (mode == Mode::Pair) {
        for (const size_t call : CallsToFail()) {
            for (size_t allocation = 1; allocation <= allocations_; ++allocation)
                run({call, allocation, failing});
        }
    } else {
        for (size_t allocation = 1; allocation <= allocations_; ++allocation)
            run({0, allocation, failing});
    }
    return totals;
}

std::vector<size_t> Torturer::CallsToFail() const {
    std::vector<size_t> numbers;
    for (size_t number = 1; number <= calls_.size(); ++number) {
        if (std::ranges::find(row_.sparedCalls, calls_[number - 1]) == row_.sparedCalls.end())
            numbers.push_back(number);
    }
    return numbers;
}

size_t Torturer::RunWith(const Plan& plan) {
    planText_ = "without a failure";
    BeginLibrary(row_.library);
    const Failed failed = RunFailing(plan);
    RunHealed();
    // What the order of calls is about ends with the library.
    EndLibrary(row_.library);
    CheckLeftovers();
    return failed.count;
}

Torturer::Failed Torturer::RunFailing(const Plan& plan) {
    Begin();
    bool isThrown = false;
    CallWatch calls(plan.call, orderedError, plan.failing, row_.sparedCalls);
    AllocationWatch memory(plan.allocation, plan.failing);
    try {
        flow_->Run();
    } catch (...) {
        isThrown = true;
    }
    memory.Stop();
    calls.Stop();
    if (plan.call == 0 && plan.allocation == 0) {
        calls_ = calls.Functions();
        allocations_ = memory.Count();
    }
    Failed failed;
    failed.count = calls.Failures().size() + (memory.Failed() ? 1 : 0);
    failed.isAlone = failed.count < 2 && plan.failing == Failing::Once;
    failed.isPair = plan.call != 0 && plan.allocation != 0;
    const std::string memoryName = "memory " + std::to_string(plan.allocation);
    bool isMemoryNamed = !memory.Failed();
    for (const CallWatch::Failure& failure : calls.Failures()) {
        if (failure.isBehindMemory && !isMemoryNamed) {
            failed.names.push_back(memoryName);
            isMemoryNamed = true;
        }
        const std::vector<std::string_view>& functions = calls.Functions();
        const std::string_view name = functions[failure.number - 1];
        const auto end = functions.begin() + static_cast<ptrdiff_t>(failure.number);
        failed.names.push_back(std::string(name) + " " +
                               std::to_string(std::count(functions.begin(), end, name)));
    }
    if (!isMemoryNamed) failed.names.push_back(memoryName);
    planText_ = failed.names.empty() ? "without a failure" : "failing: " + failed.names.front();
    if (failed.names.size() > 1)
        planText_ += plan.failing == Failing::Once ? " and " + failed.names.back() : " and all after it";
    if (isThrown) Complain("an exception leaves the flow");
    CheckOutcome(failed);
    return failed;
}

void Torturer::RunHealed() {
    flow_->CleanUp();
    simulator::ResetScripts();
    simulator::ResetUser();
    Begin();
    try {
        flow_->Run();
    } catch (...) {
        Complain("an exception leaves the flow afterwards");
    }
    const std::string outcome = Outcome({});
    if (outcome != row_.success) Complain("afterwards the outcome is \"" + outcome + "\"");
    flow_->CleanUp();
}

void Torturer::Begin() {
    Device& device = Device::Current();
    flow_->Prepare();
    for (int i = 0; i < mostBoxes; ++i)
        device.AnswerMessageBox(IDOK);
    device.SetTerminationHook([this](UINT) {
        std::fprintf(stderr, "%s ends the process, %s\n", row_.name.c_str(), planText_.c_str());
    });
    SetLastError(staleError);
}

std::string Torturer::Outcome(const Failed& failed) {
    std::string outcome = flow_->Outcome();
    for (const ShownMessageBox& shown : Device::Current().MessageBoxes()) {
        const std::string box = "box " + Narrow(shown.caption) + ": " + Narrow(shown.text);
        const auto isBox = [&](std::string_view stated) { return Matches(box, stated); };
        if (row_.boxes.empty() || failed.names.empty())
            outcome += "; " + box;
        else if (std::ranges::none_of(row_.boxes, isBox))
            Complain("there is a " + box);
    }
    return Replaced(std::move(outcome), HexText(orderedError), "E");
}

void Torturer::CheckOutcome(const Failed& failed) {
    const std::string outcome = Outcome(failed);
    if (!IsAllowed(outcome, failed)) Complain("the outcome is \"" + outcome + "\"");
    const auto isSetCursor = [](const std::string& name) { return name.starts_with("SetCursor "); };
    const Device& device = Device::Current();
    if (device.CurrentCursor() == device.WaitCursor() && std::ranges::none_of(failed.names, isSetCursor))
        Complain("the wait cursor is left on");
}

void Torturer::CheckLeftovers() {
    Device& device = Device::Current();
    for (const std::string& problem : OutOfOrder(device.Calls()))
        Complain(problem);
    device.BeginRun();
    const size_t blocks = AllocationWatch::BlocksLeft();
    if (blocks != 0) Complain(std::to_string(blocks) + " blocks are left");
    for (const std::string& violation : Violations())
        Complain(violation);
    Violations().clear();
}

const Statement* Torturer::Find(std::string_view failure) const {
    const std::string_view name = failure.substr(0, failure.find(' '));
    for (const std::string_view wanted : {failure, name}) {
        const auto found = std::ranges::find(row_.statements, wanted, &Statement::failure);
        if (found != row_.statements.end()) return &*found;
    }
    return nullptr;
}

bool Torturer::IsAllowed(std::string_view outcome, const Failed& failed) const {
    bool changes = false;
    for (const std::string& failure : failed.names) {
        const Statement* const statement = Find(failure);
        if (statement == nullptr) continue;
        changes = true;
        bool goesOn = false;
        for (const std::string_view stated : statement->outcomes) {
            goesOn = goesOn || stated == "...";
            const bool isForSeveral = stated.starts_with("+");
            if (isForSeveral && failed.isAlone) continue;
            if (Matches(outcome, stated.substr(isForSeveral ? 1 : 0))) return true;
        }
        if (!goesOn && !failed.isPair) return false;
    }
    return !changes && outcome == SuccessWithFailures(failed);
}

std::string_view Torturer::SuccessWithFailures(const Failed& failed) const {
    const std::string_view success = row_.success;
    return row_.boxes.empty() || failed.names.empty() ? success : success.substr(0, success.find("; box "));
}

void Torturer::Complain(const std::string& what) {
    if (complaints_.size() < mostComplaints) complaints_.push_back(planText_ + ": " + what);
}
