#include "SimulatorTest.h"

namespace {

class CallWatching : public SimulatorTest {
protected:
    static bool Calls() { return GetModuleHandleW(nullptr) != nullptr; }
    static bool CallsAnother() { return LoadCursorW(nullptr, IDC_WAIT) != nullptr; }
};

}  // namespace

TEST_F(CallWatching, AllFunctionsCountTogetherInTheirOrder) {
    CallWatch watch;
    EXPECT_TRUE(Calls());
    EXPECT_TRUE(CallsAnother());
    EXPECT_TRUE(Calls());
    watch.Stop();
    EXPECT_TRUE(Calls());
    EXPECT_EQ((std::vector<std::string_view>{"GetModuleHandleW", "LoadCursorW", "GetModuleHandleW"}),
              watch.Functions());
    EXPECT_TRUE(watch.Failures().empty());
}

TEST_F(CallWatching, OneCallFailsWithItsError) {
    CallWatch watch(2, 1234);
    EXPECT_TRUE(Calls());
    EXPECT_FALSE(CallsAnother());
    EXPECT_EQ(1234u, GetLastError());
    EXPECT_TRUE(Calls());
    ASSERT_EQ(1u, watch.Failures().size());
    EXPECT_EQ(2u, watch.Failures()[0].number);
}

TEST_F(CallWatching, AllCallsFailFromThereOnButThoseThatAreSpared) {
    CallWatch watch(2, 1234, Failing::FromThereOn, {"LoadCursorW"});
    EXPECT_TRUE(Calls());
    EXPECT_TRUE(CallsAnother());
    EXPECT_FALSE(Calls());
    EXPECT_TRUE(CallsAnother());
    EXPECT_FALSE(Calls());
    EXPECT_EQ(2u, watch.Failures().size());
    EXPECT_EQ(5u, watch.Functions().size());
}

TEST_F(CallWatching, TellsWhichCallsFailedAfterAnAllocation) {
    CallWatch watch(1, 1234, Failing::FromThereOn);
    AllocationWatch memory(1);
    Calls();
    EXPECT_EQ(nullptr, ::operator new(1, std::nothrow));
    Calls();
    memory.Stop();
    ASSERT_EQ(2u, watch.Failures().size());
    EXPECT_FALSE(watch.Failures()[0].isBehindMemory);
    EXPECT_TRUE(watch.Failures()[1].isBehindMemory);
}

TEST_F(CallWatching, OrdersOfTheTestStandBesideIt) {
    const CallWatch watch(1, 1234);
    device.FailCall("GetModuleHandleW", 2, 5);
    EXPECT_FALSE(Calls());
    EXPECT_FALSE(Calls());
    EXPECT_EQ(5u, GetLastError());
    EXPECT_TRUE(Calls());
}

TEST_F(CallWatching, ASecondOneIsAMistakeInTheTest) {
    const CallWatch watch;
    const CallWatch second(1, 1234);
    EXPECT_EQ(Lines{"a CallWatch begins while another one is on"}, TakeViolations());
    EXPECT_TRUE(Calls());
}
