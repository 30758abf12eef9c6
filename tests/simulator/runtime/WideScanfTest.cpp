/* The runtime's wide scanf. Nothing here is the simulator's own: Windows' runtime passes the same tests. */
#include "Platform.h"

#include <gtest/gtest.h>

namespace {

struct Scanned {
    int result;
    int32_t value;  // 77 when nothing was assigned

    bool operator==(const Scanned&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Scanned& scanned) {
    return stream << scanned.result << ", " << scanned.value;
}

Scanned Scan(const WCHAR* text, const WCHAR* format) {
    Scanned scanned{0, 77};
    scanned.result = swscanf(text, format, &scanned.value);
    return scanned;
}

struct Scanned64 {
    int result;
    int64_t value;

    bool operator==(const Scanned64&) const = default;
};

Scanned64 Scan64(const WCHAR* text, const WCHAR* format) {
    Scanned64 scanned{0, 77};
    scanned.result = swscanf(text, format, &scanned.value);
    return scanned;
}

}  // namespace

TEST(WideScanf, IntegerOfAnyBase) {
    EXPECT_EQ((Scanned{1, 31}), Scan(TEXT("0x1f"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 31}), Scan(TEXT("0X1F"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 15}), Scan(TEXT("017"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, -12}), Scan(TEXT("-12"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 12}), Scan(TEXT("+12"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, -16}), Scan(TEXT("-0x10"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 0}), Scan(TEXT("0"), TEXT("%i")));
}

TEST(WideScanf, ReadingStopsAtTheFirstUnitThatIsNoDigit) {
    EXPECT_EQ((Scanned{1, 12}), Scan(TEXT("12abc"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 1}), Scan(TEXT("018"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 12}), Scan(TEXT("12\x0661"), TEXT("%i")));
}

TEST(WideScanf, SpacesBeforeANumberAreSkipped) {
    EXPECT_EQ((Scanned{1, 5}), Scan(TEXT(" \t\r\n5"), TEXT("%i")));
}

TEST(WideScanf, TextWithoutANumberAssignsNothing) {
    EXPECT_EQ((Scanned{0, 77}), Scan(TEXT("abc"), TEXT("%i")));
    EXPECT_EQ((Scanned{0, 77}), Scan(TEXT("-x"), TEXT("%d")));
}

TEST(WideScanf, EndBeforeTheFirstFieldIsEof) {
    EXPECT_EQ((Scanned{EOF, 77}), Scan(TEXT(""), TEXT("%i")));
    EXPECT_EQ((Scanned{EOF, 77}), Scan(TEXT(""), TEXT("%d")));
}

TEST(WideScanf, SpacesAloneAssignNothing) {
    // Whether that is EOF or 0 differs between versions of the runtime.
    EXPECT_GE(0, Scan(TEXT("  "), TEXT("%i")).result);
    EXPECT_EQ(77, Scan(TEXT("  "), TEXT("%i")).value);
}

TEST(WideScanf, FixedBases) {
    EXPECT_EQ((Scanned{1, 10}), Scan(TEXT("010"), TEXT("%d")));
    EXPECT_EQ((Scanned{1, 0}), Scan(TEXT("0x10"), TEXT("%d")));
    EXPECT_EQ((Scanned{1, 16}), Scan(TEXT("10"), TEXT("%x")));
    EXPECT_EQ((Scanned{1, 16}), Scan(TEXT("0x10"), TEXT("%x")));
    EXPECT_EQ((Scanned{1, 8}), Scan(TEXT("10"), TEXT("%o")));
    EXPECT_EQ((Scanned{1, -1}), Scan(TEXT("4294967295"), TEXT("%u")));
}

TEST(WideScanf, NumbersTooLargeWrap) {
    EXPECT_EQ((Scanned{1, 0}), Scan(TEXT("4294967296"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, 5}), Scan(TEXT("0x100000005"), TEXT("%i")));
    EXPECT_EQ((Scanned{1, -2147483647 - 1}), Scan(TEXT("2147483648"), TEXT("%i")));
    // 10^20 is 5 * 2^64 + 7766279631452241920, which is 0x6BC75E2D63100000.
    EXPECT_EQ((Scanned{1, 0x63100000}), Scan(TEXT("100000000000000000000"), TEXT("%i")));
    EXPECT_EQ((Scanned64{1, 7766279631452241920}), Scan64(TEXT("100000000000000000000"), TEXT("%I64d")));
}

TEST(WideScanf, SixtyFourBits) {
    EXPECT_EQ((Scanned64{1, 4294967296}), Scan64(TEXT("4294967296"), TEXT("%I64d")));
    EXPECT_EQ((Scanned64{1, -1}), Scan64(TEXT("-1"), TEXT("%I64d")));
    EXPECT_EQ((Scanned64{1, INT64_MAX}), Scan64(TEXT("9223372036854775807"), TEXT("%I64d")));
    EXPECT_EQ((Scanned64{0, 77}), Scan64(TEXT("many"), TEXT("%I64d")));
}

TEST(WideScanf, ShortAssigns16BitsOnly) {
    int16_t values[2] = {1, 2};
    EXPECT_EQ(1, swscanf(TEXT("65535"), TEXT("%hd"), values));
    EXPECT_EQ(-1, values[0]);
    EXPECT_EQ(2, values[1]);
}

TEST(WideScanf, LongAssigns32BitsOnly) {
    LONG values[2] = {1, 2};
    EXPECT_EQ(1, swscanf(TEXT("-1"), TEXT("%ld"), values));
    EXPECT_EQ(-1, values[0]);
    EXPECT_EQ(2, values[1]);
}

TEST(WideScanf, WidthBoundsTheUnitsOfANumber) {
    EXPECT_EQ((Scanned{1, 12}), Scan(TEXT("1234"), TEXT("%2d")));
    EXPECT_EQ((Scanned{1, -1}), Scan(TEXT("-1234"), TEXT("%2d")));
}

TEST(WideScanf, LiteralsSpacesAndSuppressedFields) {
    int first = 0;
    int second = 0;
    EXPECT_EQ(2, swscanf(TEXT("a1 :\t2%3"), TEXT("a%d : %d%%%*d"), &first, &second));
    EXPECT_EQ(1, first);
    EXPECT_EQ(2, second);
    EXPECT_EQ(1, swscanf(TEXT("1,2"), TEXT("%d;%d"), &first, &second));
    EXPECT_EQ(1, swscanf(TEXT("1"), TEXT("%d%d"), &first, &second));
    EXPECT_EQ(0, swscanf(TEXT("b"), TEXT("a%d"), &first));
}

TEST(WideScanf, WordsAreWide) {
    WCHAR word[8] = TEXT("???????");
    int number = 0;
    EXPECT_EQ(2, swscanf(TEXT("  \xD83Dx 5"), TEXT("%s%d"), word, &number));
    EXPECT_EQ((std::basic_string<WCHAR>{0xD83D, 'x'}), word);
    EXPECT_EQ(5, number);
    EXPECT_EQ(1, swscanf(TEXT("abcdef"), TEXT("%3s"), word));
    EXPECT_EQ(TEXT("abc"), std::basic_string<WCHAR>(word));
    EXPECT_EQ(EOF, swscanf(TEXT(""), TEXT("%s"), word));
}
