/* Runs a flow with every failure of one kind, and holds what comes of it against the flow's statements. */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Flow.h"
#include "machine/CallWatch.h"

/* What is made to fail: each call or allocation alone, each with all that follow it, or each pair of one call
 * and one allocation. */
enum class Mode { Call, CallsFromThere, Allocation, AllocationsFromThere, Pair };

std::string_view NameOf(Mode mode);

struct Totals {
    size_t runs = 0;      // each of them is followed by one without failures, which is not counted
    size_t failures = 0;  // that were brought about

    Totals& operator+=(const Totals& other) {
        runs += other.runs;
        failures += other.failures;
        return *this;
    }
};

class Torturer {
public:
    explicit Torturer(const FlowRow& row);
    Torturer(const Torturer&) = delete;
    Torturer& operator=(const Torturer&) = delete;
    ~Torturer();

    /* Counts the flow's calls and allocations in a run without failures. */
    void Count();

    /* Runs it with every failure of that kind. */
    Totals RunAll(Mode mode);

    [[nodiscard]] size_t Calls() const { return calls_.size(); }
    [[nodiscard]] size_t Allocations() const { return allocations_; }

    /* What was not as it has to be, a line for every run in which that was so: the failure, and what came of
     * it. At most `mostComplaints`. */
    [[nodiscard]] const std::vector<std::string>& Complaints() const { return complaints_; }

    static constexpr size_t mostComplaints = 20;

private:
    /* Numbers from 1; 0: none fails. */
    struct Plan {
        size_t call = 0;
        size_t allocation = 0;
        Failing failing = Failing::Once;
    };

    struct Failed {
        std::vector<std::string> names;  // as statements have them, with their numbers, in order
        size_t count = 0;
        bool isAlone = true;
        bool isPair = false;  // of a call and an allocation
    };

    size_t RunWith(const Plan& plan);
    Failed RunFailing(const Plan& plan);
    void RunHealed();
    void Begin();
    void CheckOutcome(const Failed& failed);
    void CheckLeftovers();
    std::string Outcome(const Failed& failed);
    [[nodiscard]] bool IsAllowed(std::string_view outcome, const Failed& failed) const;
    [[nodiscard]] std::string_view SuccessWithFailures(const Failed& failed) const;
    [[nodiscard]] const Statement* Find(std::string_view failure) const;
    [[nodiscard]] std::vector<size_t> CallsToFail() const;
    void Complain(const std::string& what);

    const FlowRow row_;
    std::unique_ptr<Flow> flow_;
    std::vector<std::string_view> calls_;
    size_t allocations_ = 0;
    std::string planText_;
    std::vector<std::string> complaints_;
};
