#include "text/TextKey.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

/* What every way to ask tells, of texts and of keys. */
bool IsBefore(const WideString& one, const WideString& other) {
    const TextKeyOrder order;
    const bool isBefore = order(TextKeyView(one), TextKeyView(other));
    EXPECT_EQ(isBefore, order(TextKey(one), TextKey(other)));
    EXPECT_EQ(isBefore, order(TextKey(one), TextKeyView(other)));
    EXPECT_EQ(isBefore, order(TextKeyView(one), TextKey(other)));
    return isBefore;
}

/* The rule itself: the first unit that differs decides, then the length. */
bool IsBeforeByUnits(WideStringView one, WideStringView other) {
    return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end());
}

}  // namespace

TEST(TextKey, FirstUnitThatDiffersDecides) {
    EXPECT_TRUE(IsBefore(TEXT("abcdefgh"), TEXT("abcdefgi")));
    EXPECT_FALSE(IsBefore(TEXT("abcdefgi"), TEXT("abcdefgh")));
    EXPECT_TRUE(IsBefore(TEXT("abcdXzzz"), TEXT("abcdYaaa")));
}

TEST(TextKey, UnitsAreNumbersAndNoBytes) {
    // The low byte alone, or the bytes in their order in memory, would tell the opposite.
    EXPECT_TRUE(IsBefore(TEXT("aaa\x01FF"), TEXT("aaa\x0200")));
    EXPECT_TRUE(IsBefore(TEXT("aaa\x7FFF"), TEXT("aaa\x8000")));
    EXPECT_TRUE(IsBefore(TEXT("aa\x01FFzzzz"), TEXT("aa\x0200zzzz")));
}

TEST(TextKey, HighByteOfTheFirstUnitThatDiffersDecidesBehindTheHead) {
    EXPECT_TRUE(IsBefore(TEXT("aaaa\x0161zzz"), TEXT("aaaa\x0261yyy")));
    EXPECT_TRUE(IsBefore(TEXT("aaaa\x0161zzzzzzzz"), TEXT("aaaa\x0261yyyyyyyy")));
    // Whichever of its bits is the lowest that differs.
    EXPECT_TRUE(IsBefore(TEXT("aaaa\x0002\x0001zz"), TEXT("aaaa\x0004\x0002zz")));
}

TEST(TextKey, CaseAndSurrogatesAreNotLookedAt) {
    EXPECT_TRUE(IsBefore(TEXT("UserID"), TEXT("userid")));
    EXPECT_TRUE(IsBefore(TEXT("\xD83D\xDE00"), TEXT("\xFFFD")))
        << "though its character has the greater number";
}

TEST(TextKey, BeginningOfATextComesBeforeIt) {
    EXPECT_TRUE(IsBefore(TEXT(""), TEXT("a")));
    EXPECT_TRUE(IsBefore(TEXT("abcd"), TEXT("abcde")));
    EXPECT_FALSE(IsBefore(TEXT("abcde"), TEXT("abcd")));
    EXPECT_FALSE(IsBefore(TEXT("abcd"), TEXT("abcd")));
    EXPECT_FALSE(IsBefore(TEXT(""), TEXT("")));
}

TEST(TextKey, UnitZeroIsAUnit) {
    EXPECT_TRUE(IsBefore(WideString(4, 0), WideString(5, 0)));
    EXPECT_TRUE(IsBefore(WideString{'a', 0, 'b'}, WideString{'a', 0, 'c'}));
}

TEST(TextKey, EveryLengthAndPositionTellsTheSame) {
    const WCHAR differing[] = {'a', 'b', 0, 0xFFFF, 0x0161, 0x6101};
    for (size_t length = 0; length <= 17; ++length) {
        const WideString one(length, 'a');
        for (size_t at = 0; at < length; ++at) {
            for (const WCHAR unit : differing) {
                WideString other(length, 'a');
                other[at] = unit;
                for (const WideString& text : {other, other.substr(0, at + 1), other + TEXT("a")}) {
                    ASSERT_EQ(IsBeforeByUnits(one, text), IsBefore(one, text)) << length << " " << at;
                    ASSERT_EQ(IsBeforeByUnits(text, one), IsBefore(text, one)) << length << " " << at;
                }
            }
        }
    }
}

TEST(TextKey, OnlyTextAtAnAddressForWordsCanBeViewed) {
    const WideString text = TEXT("abcdefgh");
    for (size_t at = 0; at < text.size(); ++at)
        EXPECT_EQ(at % unitsPerWord == 0, TextKeyView::CanView(WideStringView(text).substr(at))) << at;
    EXPECT_TRUE(TextKeyView::CanView(WideString()));
    EXPECT_TRUE(TextKeyView::CanView(WideStringView()));
}

TEST(TextKey, EndOfATextIsNoUnitZero) {
    // Both begin with the same number: what is missing of a text counts as 0 there.
    EXPECT_TRUE(IsBefore(TEXT("a"), WideString{'a', 0}));
    EXPECT_FALSE(IsBefore(WideString{'a', 0}, TEXT("a")));
    EXPECT_TRUE(IsBefore(WideString{'a', 0}, WideString{'a', 0, 0}));
    EXPECT_TRUE(IsBefore(TEXT(""), WideString{0}));
    EXPECT_TRUE(IsBefore(WideString{'a', 0, 0}, WideString{'a', 1}));
}

TEST(TextKey, EqualityIsThatOfTheTexts) {
    EXPECT_TRUE(TextKey(TEXT("abcde")).Is(TEXT("abcde")));
    EXPECT_FALSE(TextKey(TEXT("abcde")).Is(TEXT("abcdE")));
    EXPECT_FALSE(TextKey(TEXT("abcde")).Is(TEXT("abcd")));
    EXPECT_FALSE(TextKey(TEXT("abcd")).Is(TEXT("abcde")));
    EXPECT_FALSE(TextKey(TEXT("a")).Is(WideString{'a', 0}));
    EXPECT_TRUE(TextKey(TEXT("")).Is(TEXT("")));
    EXPECT_EQ(TextKey(TEXT("a")), TextKey(TEXT("a")));
    EXPECT_FALSE(TextKey(TEXT("a")) == TextKey(WideString{'a', 0}));
}

TEST(TextKey, ContainersFindItWithoutAKey) {
    const std::set<TextKey, TextKeyOrder> texts = {TEXT("a"), TEXT("\x0100"), TEXT("Z")};
    std::vector<WideString> inOrder;
    for (const TextKey& key : texts)
        inOrder.push_back(key.Text());
    EXPECT_EQ((std::vector<WideString>{TEXT("Z"), TEXT("a"), TEXT("\x0100")}), inOrder);
    EXPECT_EQ(texts.end(), texts.find(TextKeyView(WideString(TEXT("b")))));
    EXPECT_EQ(TEXT("a"), texts.find(TextKeyView(WideString(TEXT("a"))))->Text());
}

TEST(TextKey, WhatLiesBehindAViewDoesNotCount) {
    const WideString text = TEXT("abcdefgh");
    for (size_t size = 0; size < text.size(); ++size) {
        const TextKeyView view(WideStringView(text).substr(0, size));
        const TextKey key(text.substr(0, size));
        EXPECT_EQ(key.Head(), view.Head());
        EXPECT_FALSE(TextKeyOrder()(key, view));
        EXPECT_FALSE(TextKeyOrder()(view, key));
    }
}
