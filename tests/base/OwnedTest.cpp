#include "base/Owned.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

std::vector<int> closed;

/* A kind whose "no handle" is not 0, and whose closing spoils the last error. */
struct NumberKind {
    using Handle = int;
    static constexpr Handle none = -1;
    static void Close(Handle handle) noexcept {
        closed.push_back(handle);
        SetLastError(99);
    }
};
using Number = Owned<NumberKind>;

class OwnedHandle : public ::testing::Test {
protected:
    void SetUp() override { closed.clear(); }
};

}  // namespace

TEST_F(OwnedHandle, IsClosedOnceAtTheEndOfItsScope) {
    { const Number number(5); }
    EXPECT_EQ(std::vector<int>{5}, closed);
}

TEST_F(OwnedHandle, NothingIsClosedWhenThereIsNone) {
    {
        const Number number;
        EXPECT_FALSE(number);
        const Number none(-1);
        EXPECT_FALSE(none);
        const Number zero(0);
        EXPECT_TRUE(zero);
    }
    EXPECT_EQ(std::vector<int>{0}, closed);
}

TEST_F(OwnedHandle, ClosingKeepsTheLastError) {
    SetLastError(1234);
    { const Number number(5); }
    EXPECT_EQ(1234u, GetLastError());
}

TEST_F(OwnedHandle, ResetClosesTheOldOneAndTakesTheNewOne) {
    Number number(5);
    number.Reset(7);
    EXPECT_EQ(std::vector<int>{5}, closed);
    number.Reset();
    EXPECT_EQ((std::vector<int>{5, 7}), closed);
}

TEST_F(OwnedHandle, StaysWhereItIs) {
    EXPECT_FALSE(std::is_copy_constructible_v<Number>);
    EXPECT_FALSE(std::is_move_constructible_v<Number>);
    EXPECT_FALSE(std::is_copy_assignable_v<Number>);
    EXPECT_FALSE(std::is_move_assignable_v<Number>);
}
