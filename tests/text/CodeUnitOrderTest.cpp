#include "text/CodeUnitOrder.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

constexpr CodeUnitOrder isBefore;

/* The rule itself: the first unit that differs decides, then the length. */
bool IsBeforeByUnits(WideStringView one, WideStringView other) {
    return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end());
}

}  // namespace

TEST(CodeUnitOrder, FirstUnitThatDiffersDecides) {
    EXPECT_TRUE(isBefore(TEXT("abcdefgh"), TEXT("abcdefgi")));
    EXPECT_FALSE(isBefore(TEXT("abcdefgi"), TEXT("abcdefgh")));
    EXPECT_TRUE(isBefore(TEXT("abcdXzzz"), TEXT("abcdYaaa")));
}

TEST(CodeUnitOrder, UnitsAreNumbersAndNoBytes) {
    // The low byte alone, or the bytes in their order in memory, would tell the opposite.
    EXPECT_TRUE(isBefore(TEXT("aaa\x01FF"), TEXT("aaa\x0200")));
    EXPECT_TRUE(isBefore(TEXT("aaa\x7FFF"), TEXT("aaa\x8000")));
    EXPECT_TRUE(isBefore(TEXT("aa\x01FFzzzz"), TEXT("aa\x0200zzzz")));
}

TEST(CodeUnitOrder, CaseAndSurrogatesAreNotLookedAt) {
    EXPECT_TRUE(isBefore(TEXT("UserID"), TEXT("userid")));
    EXPECT_TRUE(isBefore(TEXT("\xD83D\xDE00"), TEXT("\xFFFD")))
        << "though its character has the greater number";
}

TEST(CodeUnitOrder, BeginningOfATextComesBeforeIt) {
    EXPECT_TRUE(isBefore(TEXT(""), TEXT("a")));
    EXPECT_TRUE(isBefore(TEXT("abcd"), TEXT("abcde")));
    EXPECT_FALSE(isBefore(TEXT("abcde"), TEXT("abcd")));
    EXPECT_FALSE(isBefore(TEXT("abcd"), TEXT("abcd")));
    EXPECT_FALSE(isBefore(TEXT(""), TEXT("")));
}

TEST(CodeUnitOrder, UnitZeroIsAUnit) {
    EXPECT_TRUE(isBefore(WideString(4, 0), WideString(5, 0)));
    EXPECT_TRUE(isBefore(WideString{'a', 0, 'b'}, WideString{'a', 0, 'c'}));
}

TEST(CodeUnitOrder, EveryLengthPositionAndAddressTellsTheSame) {
    // One more unit than needed, so that texts can begin at any address a unit may have.
    const WCHAR differing[] = {'a', 'b', 0, 0xFFFF, 0x0161, 0x6101};
    for (size_t length = 0; length <= 13; ++length) {
        for (size_t start = 0; start < 4; ++start) {
            WideString one(start + length, 'a');
            for (size_t at = 0; at < length; ++at) {
                for (const WCHAR unit : differing) {
                    WideString other(length, 'a');
                    other[at] = unit;
                    const WideStringView moved = WideStringView(one).substr(start);
                    ASSERT_EQ(IsBeforeByUnits(moved, other), isBefore(moved, other)) << length << " " << at;
                    ASSERT_EQ(IsBeforeByUnits(other, moved), isBefore(other, moved)) << length << " " << at;
                }
            }
        }
    }
}

TEST(CodeUnitOrder, ContainersFindTextInAnyForm) {
    const std::set<WideString, CodeUnitOrder> texts = {TEXT("a"), TEXT("\x0100"), TEXT("Z")};
    EXPECT_EQ((std::vector<WideString>{TEXT("Z"), TEXT("a"), TEXT("\x0100")}),
              std::vector<WideString>(texts.begin(), texts.end()));
    EXPECT_EQ(texts.end(), texts.find(WideStringView(TEXT("b"))));
    EXPECT_EQ(TEXT("a"), *texts.find(WideStringView(TEXT("a"))));
}
