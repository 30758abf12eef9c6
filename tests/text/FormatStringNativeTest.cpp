#include <gtest/gtest.h>

#include "Device.h"
#include "support/DeviceTest.h"
#include "text/FormatString.h"

namespace {

using FormatStringMemory = DeviceTest;

}  // namespace

TEST_F(FormatStringMemory, OnlyTheResultIsAllocated) {
    const WideString argument(5000, 'x');
    AllocationWatch watch;
    const WideString text = FormatString(TEXT("%s %d"), argument.c_str(), 7);
    watch.Stop();
    EXPECT_EQ(1u, watch.Count());
    EXPECT_EQ(WideString(999, 'x'), text);
}

TEST_F(FormatStringMemory, WidthsAreCutWhileTheyAreMade) {
    AllocationWatch watch;
    const WideString spaces = FormatString(TEXT("%2147483647d%2147483647s"), 7, TEXT("text"));
    const WideString zeros = FormatString(TEXT("%.2147483647d"), 7);
    watch.Stop();
    EXPECT_EQ(2u, watch.Count());
    EXPECT_EQ(WideString(999, ' '), spaces);
    EXPECT_EQ(WideString(999, '0'), zeros);
}

TEST_F(FormatStringMemory, ShortResultNeedsNoAllocation) {
    AllocationWatch watch;
    const WideString text = FormatString(TEXT("0x%x"), 31u);
    watch.Stop();
    EXPECT_EQ(0u, watch.Count());
    EXPECT_EQ(TEXT("0x1f"), text);
}

TEST_F(FormatStringMemory, AppendingAllocatesOnlyWhatTheStringGrowsBy) {
    const WideString argument(5000, 'x');
    WideString text;
    text.reserve(2000);
    AllocationWatch watch;
    AppendFormat(text, TEXT("%s"), argument.c_str());
    AppendFormat(text, TEXT("%s"), argument.c_str());
    watch.Stop();
    EXPECT_EQ(0u, watch.Count());
    EXPECT_EQ(WideString(1998, 'x'), text);
}

TEST_F(FormatStringMemory, MemoryThatRunsOutLeavesTheStringAsItWas) {
    const WideString argument(500, 'x');
    WideString text = TEXT("before");
    AllocationWatch watch(1);
    EXPECT_THROW(AppendFormat(text, TEXT("%s"), argument.c_str()), std::bad_alloc);
    watch.Stop();
    EXPECT_EQ(TEXT("before"), text);
}
