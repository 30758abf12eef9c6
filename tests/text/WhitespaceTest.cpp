#include "text/Whitespace.h"

#include <gtest/gtest.h>

namespace {

WideString Trimmed(WideString text) {
    return TrimWhitespace(text);
}

}  // namespace

TEST(WithoutOuterWhitespace, StopsAtTheEndOfAViewOfMoreSpaces) {
    const WideString spaces(10, TEXT(' '));
    EXPECT_TRUE(WithoutOuterWhitespace(WideStringView(spaces).substr(0, 5)).empty());
}

TEST(TrimWhitespace, EmptyTextStaysEmpty) {
    EXPECT_EQ(WideString(), Trimmed(TEXT("")));
}

TEST(TrimWhitespace, TextOfTheFourWhitespaceUnitsBecomesEmpty) {
    EXPECT_EQ(WideString(), Trimmed(TEXT(" \t\r\n")));
}

TEST(TrimWhitespace, EachOfTheFourUnitsIsRemovedFromBothEnds) {
    EXPECT_EQ(TEXT("a"), Trimmed(TEXT(" a ")));
    EXPECT_EQ(TEXT("a"), Trimmed(TEXT("\ta\t")));
    EXPECT_EQ(TEXT("a"), Trimmed(TEXT("\na\n")));
    EXPECT_EQ(TEXT("a"), Trimmed(TEXT("\ra\r")));
    EXPECT_EQ(TEXT("a"), Trimmed(TEXT("\r\n \ta\t \n\r")));
}

TEST(TrimWhitespace, WhitespaceInsideIsKept) {
    EXPECT_EQ(TEXT("a b"), Trimmed(TEXT(" a b ")));
}

TEST(TrimWhitespace, RunOfWhitespaceInsideIsKept) {
    EXPECT_EQ(TEXT("a \t\r\n b"), Trimmed(TEXT("a \t\r\n b")));
}

TEST(TrimWhitespace, OneEndAloneIsTrimmed) {
    EXPECT_EQ(TEXT("a b"), Trimmed(TEXT("  a b")));
    EXPECT_EQ(TEXT("a b"), Trimmed(TEXT("a b  ")));
}

TEST(TrimWhitespace, NoOtherUnitCountsAsWhitespace) {
    // Vertical tab, form feed, next line, no-break space, ideographic space, NUL.
    for (const unsigned code : {0x0Bu, 0x0Cu, 0x85u, 0xA0u, 0x3000u, 0u}) {
        SCOPED_TRACE(code);
        const WideString unit(1, static_cast<WCHAR>(code));
        EXPECT_EQ(unit, Trimmed(TEXT(" ") + unit + TEXT(" ")));
    }
}

TEST(TrimWhitespace, UnitsWhoseLowByteIsWhitespaceAreKept) {
    const WideString text{0x0120, 'a', 0x2009, 0x010A, 0x010D};
    EXPECT_EQ(text, Trimmed(text));
}

TEST(WithoutOuterWhitespace, NeverLooksBehindTheText) {
    const WideStringView blanks = TEXT("    ");
    for (size_t length = 0; length < blanks.size(); ++length)
        EXPECT_EQ(WideStringView(), WithoutOuterWhitespace(blanks.substr(0, length))) << length;
    EXPECT_EQ(WideStringView(TEXT("a")), WithoutOuterWhitespace(WideStringView(TEXT(" a ")).substr(0, 2)));
}

TEST(TrimWhitespace, ResultIsTheStringItself) {
    WideString text = TEXT(" a ");
    EXPECT_EQ(&text, &TrimWhitespace(text));
    EXPECT_EQ(TEXT("a"), text);
}

TEST(TrimWhitespace, LongRunsAtBothEndsAreRemoved) {
    const WideString run(1000000, ' ');
    EXPECT_EQ(TEXT("a"), Trimmed(run + TEXT("a") + run));
    EXPECT_EQ(WideString(), Trimmed(run));
}
