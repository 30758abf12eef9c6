/* Every flow with every failure. The totals are printed at the end, a line for each flow. */
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <tuple>

#include "TortureScope.h"
#include "Torturer.h"

namespace {

const std::vector<FlowRow>& Rows() {
    static const std::vector<FlowRow> rows = AllRows();
    return rows;
}

struct FlowTotals {
    size_t calls = 0;
    size_t allocations = 0;
    Totals totals;
};

std::map<std::string, FlowTotals>& AllTotals() {
    static std::map<std::string, FlowTotals> totals;
    return totals;
}

/* Prints what was done, and what was not. */
class Account : public ::testing::Environment {
public:
    void TearDown() override {
        Totals all;
        for (const auto& [name, flow] : AllTotals()) {
            std::printf("torture: %-36s %4zu calls %4zu allocations %7zu runs %8zu failures\n", name.c_str(),
                        flow.calls, flow.allocations, flow.totals.runs, flow.totals.failures);
            all += flow.totals;
        }
        std::printf("figure: torture: %zu flows, %zu runs, %zu failures; %s\n", AllTotals().size(), all.runs,
                    all.failures, tortureLeavesOut);
    }
};

const auto* const account = ::testing::AddGlobalTestEnvironment(new Account);

class Torture : public ::testing::TestWithParam<std::tuple<size_t, Mode>> {};

}  // namespace

TEST_P(Torture, LeavesNothingBehind) {
    const FlowRow& row = Rows()[std::get<0>(GetParam())];
    const Mode mode = std::get<1>(GetParam());
    Torturer torturer(row);
    torturer.Count();
    FlowTotals& flow = AllTotals()[row.name];
    flow.calls = torturer.Calls();
    flow.allocations = torturer.Allocations();
    if (torturer.Complaints().empty()) flow.totals += torturer.RunAll(mode);
    for (const std::string& complaint : torturer.Complaints())
        ADD_FAILURE() << row.name << ", " << complaint;
}

INSTANTIATE_TEST_SUITE_P(Flow, Torture,
                         ::testing::Combine(::testing::Range(size_t{0}, Rows().size()),
                                            ::testing::ValuesIn(std::begin(tortureModes),
                                                                std::end(tortureModes))),
                         [](const auto& tested) {
                             const std::string flow = Rows()[std::get<0>(tested.param)].name;
                             return flow + std::string(NameOf(std::get<1>(tested.param)));
                         });
