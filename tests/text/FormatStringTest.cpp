#include "text/FormatString.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

/* `count` units of which no two neighbours are alike, so that a text moved by one unit shows. */
WideString Units(size_t count) {
    WideString text;
    for (size_t i = 0; i < count; ++i)
        text += static_cast<WCHAR>('a' + i % 26);
    return text;
}

WideString Unit(unsigned code) {
    return WideString(1, static_cast<WCHAR>(code));
}

WideString FormatThrough(const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    WideString text = FormatStringV(format, arguments);
    va_end(arguments);
    return text;
}

WideString& AppendThrough(WideString& text, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    WideString& result = AppendFormatV(text, format, arguments);
    va_end(arguments);
    return result;
}

constexpr size_t lengths[] = {998, 999, 1000, 5000};
constexpr size_t most = 999;

}  // namespace

TEST(FormatString, EmptyFormatGivesEmptyText) {
    EXPECT_EQ(WideString(), FormatString(TEXT("")));
}

TEST(FormatString, TextWithoutDirectivesStays) {
    EXPECT_EQ(TEXT("Internal error"), FormatString(TEXT("Internal error")));
}

TEST(FormatString, PlainSTakesWideText) {
    EXPECT_EQ(TEXT("<text>"), FormatString(TEXT("<%s>"), TEXT("text")));
    EXPECT_EQ(TEXT("<>"), FormatString(TEXT("<%s>"), TEXT("")));
}

TEST(FormatString, TextAboveU00FFPassesUnchanged) {
    const WideString text = Unit(0xE9) + Unit(0x20AC) + Unit(0x4E2D) + Unit(0xFFFD) + Unit(0xFFFF);
    EXPECT_EQ(text, FormatString(TEXT("%s"), text.c_str()));
    EXPECT_EQ(text + TEXT("7"), FormatString((text + TEXT("%d")).c_str(), 7));
}

TEST(FormatString, SurrogatesPassAsUnitsPairedOrNot) {
    const WideString text = Unit(0xD83D) + Unit(0xDE00) + TEXT("x") + Unit(0xDC00) + Unit(0xD800);
    EXPECT_EQ(text, FormatString(TEXT("%s"), text.c_str()));
}

TEST(FormatString, WidthAndPrecisionOfTextCountUnits) {
    EXPECT_EQ(TEXT("[   ab]"), FormatString(TEXT("[%5s]"), TEXT("ab")));
    EXPECT_EQ(TEXT("[ab   ]"), FormatString(TEXT("[%-5s]"), TEXT("ab")));
    EXPECT_EQ(TEXT("[abc]"), FormatString(TEXT("[%.3s]"), TEXT("abcdef")));
    EXPECT_EQ(TEXT("[  abc]"), FormatString(TEXT("[%5.3s]"), TEXT("abcdef")));
    EXPECT_EQ(TEXT("[abcdef]"), FormatString(TEXT("[%3s]"), TEXT("abcdef")));
    EXPECT_EQ(TEXT("[]"), FormatString(TEXT("[%.0s]"), TEXT("abcdef")));
    const WideString pair = Unit(0xD83D) + Unit(0xDE00);
    EXPECT_EQ(TEXT("[ ") + pair + TEXT("]"), FormatString(TEXT("[%3s]"), pair.c_str()));
    EXPECT_EQ(TEXT("[") + Unit(0xD83D) + TEXT("]"), FormatString(TEXT("[%.1s]"), pair.c_str()));
}

TEST(FormatString, WidthAndPrecisionMayBeArguments) {
    EXPECT_EQ(TEXT("[    7]"), FormatString(TEXT("[%*d]"), 5, 7));
    EXPECT_EQ(TEXT("[ab]"), FormatString(TEXT("[%.*s]"), 2, TEXT("abcdef")));
}

TEST(FormatString, DecimalNumbers) {
    EXPECT_EQ(TEXT("0 -1 2147483647 -2147483648"),
              FormatString(TEXT("%d %d %d %d"), 0, -1, INT_MAX, INT_MIN));
    EXPECT_EQ(TEXT("4294967295"), FormatString(TEXT("%u"), UINT_MAX));
    EXPECT_EQ(TEXT("[   42]"), FormatString(TEXT("[%5d]"), 42));
    EXPECT_EQ(TEXT("[42   ]"), FormatString(TEXT("[%-5d]"), 42));
    EXPECT_EQ(TEXT("[00042]"), FormatString(TEXT("[%05d]"), 42));
    EXPECT_EQ(TEXT("[-0042]"), FormatString(TEXT("[%05d]"), -42));
    EXPECT_EQ(TEXT("[+42]"), FormatString(TEXT("[%+d]"), 42));
    EXPECT_EQ(TEXT("[  042]"), FormatString(TEXT("[%5.3d]"), 42));
}

TEST(FormatString, HexadecimalNumbers) {
    EXPECT_EQ(TEXT("0 1f ffffffff"), FormatString(TEXT("%x %x %x"), 0u, 31u, UINT_MAX));
    EXPECT_EQ(TEXT("1F"), FormatString(TEXT("%X"), 31u));
    EXPECT_EQ(TEXT("0000001f"), FormatString(TEXT("%08x"), 31u));
    EXPECT_EQ(TEXT("0x1f"), FormatString(TEXT("0x%x"), 31u));
    EXPECT_EQ(TEXT("%0a"), FormatString(TEXT("%%%02x"), 10u));
}

TEST(FormatString, PlainCTakesAWideUnit) {
    EXPECT_EQ(TEXT("[a]"), FormatString(TEXT("[%c]"), 'a'));
    EXPECT_EQ(TEXT("[") + Unit(0x20AC) + TEXT("]"), FormatString(TEXT("[%c]"), 0x20AC));
    EXPECT_EQ(TEXT("[") + Unit(0xFFFF) + TEXT("]"), FormatString(TEXT("[%c]"), 0xFFFF));
    EXPECT_EQ(TEXT("[  a]"), FormatString(TEXT("[%3c]"), 'a'));
}

TEST(FormatString, DoubledPercentIsOne) {
    EXPECT_EQ(TEXT("100% 5%d"), FormatString(TEXT("100%% %d%%d"), 5));
}

TEST(FormatString, I64dTakes64Bits) {
    EXPECT_EQ(TEXT("9223372036854775807"), FormatString(TEXT("%I64d"), INT64_MAX));
    EXPECT_EQ(TEXT("-9223372036854775808"), FormatString(TEXT("%I64d"), INT64_MIN));
    EXPECT_EQ(TEXT("[          4294967296]"), FormatString(TEXT("[%20I64d]"), INT64_C(4294967296)));
    EXPECT_EQ(TEXT("0-9 x"), FormatString(TEXT("%I64d-%I64d %s"), INT64_C(0), INT64_C(9), TEXT("x")));
}

TEST(FormatString, ArgumentsOfDifferentKindsKeepTheirPlaces) {
    EXPECT_EQ(TEXT("a 1 -2 ff b z"),
              FormatString(TEXT("%s %d %I64d %x %s %c"), TEXT("a"), 1, INT64_C(-2), 255u, TEXT("b"), 'z'));
}

TEST(FormatString, NulUnitOfAnArgumentEndsTheText) {
    EXPECT_EQ(TEXT("ab"), FormatString(TEXT("ab%ccd"), 0));
}

TEST(FormatString, ArgumentLongerThan999UnitsIsCutThere) {
    for (const size_t length : lengths) {
        SCOPED_TRACE(length);
        const WideString text = Units(length);
        EXPECT_EQ(text.substr(0, most), FormatString(TEXT("%s"), text.c_str()));
    }
}

TEST(FormatString, FormatLongerThan999UnitsIsCutThere) {
    for (const size_t length : lengths) {
        SCOPED_TRACE(length);
        const WideString text = Units(length);
        EXPECT_EQ(text.substr(0, most), FormatString(text.c_str()));
    }
}

TEST(FormatString, WidthOver999UnitsIsCutThere) {
    EXPECT_EQ(WideString(997, ' ') + TEXT("7"), FormatString(TEXT("%998d"), 7));
    EXPECT_EQ(WideString(998, ' ') + TEXT("7"), FormatString(TEXT("%999d"), 7));
    EXPECT_EQ(WideString(999, ' '), FormatString(TEXT("%1000s"), TEXT("7")));
    EXPECT_EQ(WideString(999, ' '), FormatString(TEXT("%5000s"), TEXT("7")));
}

TEST(FormatString, CutFallsInsideTheDirectiveThatCrosses999Units) {
    const WideString text = Units(996);
    EXPECT_EQ(text + TEXT("123"), FormatString(TEXT("%s%d"), text.c_str(), 123));
    EXPECT_EQ(text + TEXT("123"), FormatString(TEXT("%s%d"), text.c_str(), 1234));
    EXPECT_EQ(text + TEXT("123"), FormatString(TEXT("%s%d"), text.c_str(), 12345));
    EXPECT_EQ(text + TEXT("923"), FormatString(TEXT("%s%I64d"), text.c_str(), INT64_C(9234567890123)));
    EXPECT_EQ(text + TEXT("12z"), FormatString(TEXT("%s%d%c"), text.c_str(), 12, 'z'));
    EXPECT_EQ(text + TEXT("12z"), FormatString(TEXT("%s%d%c%%%s"), text.c_str(), 12, 'z', TEXT("rest")));
    EXPECT_EQ(text + TEXT("%%%"), FormatString(TEXT("%s%%%%%%%%%%"), text.c_str()));
}

TEST(FormatString, CutMayDivideASurrogatePair) {
    const WideString text = Units(998) + Unit(0xD83D) + Unit(0xDE00);
    EXPECT_EQ(Units(998) + Unit(0xD83D), FormatString(TEXT("%s"), text.c_str()));
}

TEST(FormatString, ArgumentListGivesTheSame) {
    EXPECT_EQ(TEXT("a 1 -2"), FormatThrough(TEXT("%s %d %I64d"), TEXT("a"), 1, INT64_C(-2)));
    for (const size_t length : lengths) {
        SCOPED_TRACE(length);
        const WideString text = Units(length);
        EXPECT_EQ(text.substr(0, most), FormatThrough(TEXT("%s"), text.c_str()));
    }
}

TEST(AppendFormat, TextIsAddedAtTheEnd) {
    WideString text = TEXT("a");
    AppendFormat(text, TEXT("-%d"), 1);
    AppendFormat(text, TEXT("-%s"), TEXT("z"));
    EXPECT_EQ(TEXT("a-1-z"), text);
}

TEST(AppendFormat, ResultIsTheStringItself) {
    WideString text;
    EXPECT_EQ(&text, &AppendFormat(text, TEXT("%d"), 1));
    EXPECT_EQ(&text, &AppendThrough(text, TEXT("%d"), 2));
    EXPECT_EQ(TEXT("12"), text);
}

TEST(AppendFormat, EmptyFormatAddsNothing) {
    WideString text = TEXT("a");
    EXPECT_EQ(TEXT("a"), AppendFormat(text, TEXT("")));
}

TEST(AppendFormat, AtMost999UnitsAreAdded) {
    for (const size_t length : lengths) {
        SCOPED_TRACE(length);
        const WideString added = Units(length);
        WideString text = TEXT("start");
        EXPECT_EQ(TEXT("start") + added.substr(0, most), AppendFormat(text, TEXT("%s"), added.c_str()));
    }
}

TEST(AppendFormat, TextItselfMayBeLongerThan999Units) {
    WideString text = Units(5000);
    EXPECT_EQ(Units(5000) + TEXT("7"), AppendFormat(text, TEXT("%d"), 7));
    EXPECT_EQ(Units(5000) + TEXT("7") + Units(999), AppendThrough(text, TEXT("%s"), Units(1000).c_str()));
}

TEST(AppendFormat, TextBeforeKeepsItsNulUnits) {
    WideString text = TEXT("a") + Unit(0);
    EXPECT_EQ(TEXT("a") + Unit(0) + TEXT("b"), AppendFormat(text, TEXT("b")));
}

TEST(AppendFormat, ArgumentMayPointIntoTheTextItself) {
    WideString text = Units(600);
    text.shrink_to_fit();
    EXPECT_EQ(Units(600) + Units(600), AppendFormat(text, TEXT("%s"), text.c_str()));
}
