/* The runtime's wide printf. Nothing here is the simulator's own: Windows' runtime passes the same tests. */
#include "Platform.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

using Text = std::basic_string<WCHAR>;

constexpr size_t roomy = 200;

struct Formatted {
    int result;
    Text units;  // the whole buffer of `count` units and one more
};

Formatted FormatInto(size_t count, const WCHAR* format, ...) {
    Text buffer(count + 1, WCHAR{'?'});
    va_list arguments;
    va_start(arguments, format);
    const int result = _vsnwprintf(buffer.data(), count, format, arguments);
    va_end(arguments);
    return {result, buffer};
}

template <class... Arguments>
Text Format(const WCHAR* format, Arguments... arguments) {
    const Formatted formatted = FormatInto(roomy, format, arguments...);
    if (formatted.result < 0) return TEXT("failed");
    const auto length = static_cast<size_t>(formatted.result);
    EXPECT_EQ(0, formatted.units[length]);
    return formatted.units.substr(0, length);
}

}  // namespace

TEST(WidePrintf, PlainTextAndPercentSigns) {
    EXPECT_EQ(TEXT(""), Format(TEXT("")));
    EXPECT_EQ(TEXT("100% \x20AC"), Format(TEXT("100%% \x20AC")));
}

TEST(WidePrintf, Integers) {
    EXPECT_EQ(TEXT("-12 12"), Format(TEXT("%d %i"), -12, 12));
    EXPECT_EQ(TEXT("4294967295 37777777777 ffffffff FFFFFFFF"), Format(TEXT("%u %o %x %X"), -1, -1, -1, -1));
    EXPECT_EQ(TEXT("-2147483648"), Format(TEXT("%d"), INT_MIN));
    EXPECT_EQ(TEXT("0x1f 037 0"), Format(TEXT("%#x %#o %#x"), 31, 31, 0));
}

TEST(WidePrintf, IntegerFlagsWidthAndPrecision) {
    EXPECT_EQ(TEXT("[   42][42   ][00042][+42][ 42]"),
              Format(TEXT("[%5d][%-5d][%05d][%+d][% d]"), 42, 42, 42, 42, 42));
    EXPECT_EQ(TEXT("[  042][042  ][][-0042]"), Format(TEXT("[%5.3d][%-5.3d][%.0d][%05d]"), 42, 42, 0, -42));
    EXPECT_EQ(TEXT("[   7][7   ][007]"), Format(TEXT("[%*d][%*d][%.*d]"), 4, 7, -4, 7, 3, 7));
    EXPECT_EQ(TEXT("[7]"), Format(TEXT("[%.*d]"), -1, 7));
    EXPECT_EQ(TEXT("1f\x00AC"), Format(TEXT("%02x\x00AC"), 31));
}

TEST(WidePrintf, LongIs32BitsAndI64Is64) {
    EXPECT_EQ(TEXT("-1 4294967295"), Format(TEXT("%ld %lu"), LONG{-1}, static_cast<ULONG>(-1)));
    EXPECT_EQ(TEXT("-9223372036854775808"), Format(TEXT("%I64d"), INT64_MIN));
    EXPECT_EQ(TEXT("18446744073709551615 ffffffffffffffff"),
              Format(TEXT("%I64u %I64x"), INT64_C(-1), INT64_C(-1)));
    EXPECT_EQ(TEXT("Range:bytes=0-4294967296\n"),
              Format(TEXT("Range:bytes=%I64d-%I64d\n"), INT64_C(0), INT64_C(4294967296)));
    EXPECT_EQ(TEXT("4294967296"), Format(TEXT("%lld"), INT64_C(4294967296)));
    EXPECT_EQ(TEXT("-5"), Format(TEXT("%I32d"), -5));
}

TEST(WidePrintf, SizeOfRealNumbersChangesNothingElse) {
    EXPECT_EQ(TEXT("-5 ff"), Format(TEXT("%Ld %Lx"), -5, 255));
    EXPECT_EQ(TEXT("wide narrow a"), Format(TEXT("%Ls %LS %Lc"), TEXT("wide"), "narrow", 'a'));
}

TEST(WidePrintf, ShortIsCutTo16Bits) {
    EXPECT_EQ(TEXT("-1 65535 1"), Format(TEXT("%hd %hu %hx"), 0x1FFFF, 0x1FFFF, 0x10001));
}

TEST(WidePrintf, TextIsWideUnlessItsSizeSaysNarrow) {
    EXPECT_EQ(TEXT("wide wide wide"), Format(TEXT("%s %ls %ws"), TEXT("wide"), TEXT("wide"), TEXT("wide")));
    EXPECT_EQ(TEXT("narrow narrow"), Format(TEXT("%S %hs"), "narrow", "narrow"));
    EXPECT_EQ(TEXT("wide"), Format(TEXT("%lS"), TEXT("wide")));
}

TEST(WidePrintf, NullTextIsNamed) {
    EXPECT_EQ(TEXT("(null) (null) (nu"),
              Format(TEXT("%s %S %.3s"), static_cast<const WCHAR*>(nullptr),
                     static_cast<const char*>(nullptr), static_cast<const WCHAR*>(nullptr)));
}

TEST(WidePrintf, AllUnitsPassThroughText) {
    const Text units = {0xD800, 0xDC00, 0xDFFF, 0xD800, 0xFFFF, 0x0001, 0x00FF, 0xFEFF};
    EXPECT_EQ(units, Format(TEXT("%s"), units.c_str()));
    EXPECT_EQ(units + TEXT("7"), Format((units + TEXT("%d")).c_str(), 7));
    for (const WCHAR unit : units)
        EXPECT_EQ(Text(1, unit), Format(TEXT("%c"), unit));
}

TEST(WidePrintf, WidthAndPrecisionCountUnits) {
    const Text pair = {0xD83D, 0xDE00};
    EXPECT_EQ(TEXT("[  ") + pair + TEXT("]"), Format(TEXT("[%4s]"), pair.c_str()));
    EXPECT_EQ(pair.substr(0, 1), Format(TEXT("%.1s"), pair.c_str()));
    EXPECT_EQ(TEXT("[ab  ][  ab][][abc]"), Format(TEXT("[%-4.2s][%4.2s][%.0s][%.9s]"), TEXT("abc"),
                                                  TEXT("abc"), TEXT("abc"), TEXT("abc")));
    EXPECT_EQ(TEXT("[x  ][  x]"), Format(TEXT("[%-3c][%3c]"), 'x', 'x'));
}

TEST(WidePrintf, PrecisionReadsNoUnitPastIt) {
    const std::vector<WCHAR> unterminated = {WCHAR{'a'}, WCHAR{'b'}};
    EXPECT_EQ(TEXT("ab"), Format(TEXT("%.2s"), unterminated.data()));
    EXPECT_EQ(TEXT("ab"), Format(TEXT("%.*s"), 2, unterminated.data()));
}

TEST(WidePrintf, NarrowTextIsWidenedByteByByte) {
    EXPECT_EQ(TEXT("\x00E9\x00FF"), Format(TEXT("%S"), "\xE9\xFF"));
    EXPECT_EQ(TEXT("[  \x00E9]"), Format(TEXT("[%3.1hs]"), "\xE9\xFF"));
}

TEST(WidePrintf, CharacterZeroIsAUnitLikeAnother) {
    EXPECT_EQ((Text{'a', 0, 'b'}), Format(TEXT("a%cb"), 0));
}

TEST(WidePrintf, UnknownConversionPrintsItsLetter) {
    EXPECT_EQ(TEXT("y k 5"), Format(TEXT("%y %5k %d"), 5));
}

TEST(WidePrintf, PercentAtTheEndPrintsNothing) {
    EXPECT_EQ(TEXT("50"), Format(TEXT("50%")));
    EXPECT_EQ(TEXT("50"), Format(TEXT("50%-0")));
}

TEST(WidePrintf, PointerIsAllItsDigits) {
    EXPECT_EQ(Text(2 * sizeof(void*) - 4, WCHAR{'0'}) + TEXT("BEEF"),
              Format(TEXT("%p"), reinterpret_cast<void*>(uintptr_t{0xBEEF})));
}

TEST(WidePrintf, TextThatFitsEndsWithATerminator) {
    const Formatted formatted = FormatInto(5, TEXT("%s"), TEXT("abcd"));
    EXPECT_EQ(4, formatted.result);
    EXPECT_EQ((Text{'a', 'b', 'c', 'd', 0, '?'}), formatted.units);
}

TEST(WidePrintf, TextOfExactlyTheCountHasNoTerminator) {
    const Formatted formatted = FormatInto(4, TEXT("%s"), TEXT("abcd"));
    EXPECT_EQ(4, formatted.result);
    EXPECT_EQ(TEXT("abcd?"), formatted.units);
}

TEST(WidePrintf, LongerTextIsCutWithMinusOneAndNoTerminator) {
    const Formatted formatted = FormatInto(3, TEXT("%s"), TEXT("abcd"));
    EXPECT_EQ(-1, formatted.result);
    EXPECT_EQ(TEXT("abc?"), formatted.units);
    const Formatted number = FormatInto(3, TEXT("%d"), 12345);
    EXPECT_EQ(-1, number.result);
    EXPECT_EQ(TEXT("123?"), number.units);
}

TEST(WidePrintf, WidthMayExceedTheBufferByFar) {
    for (const WCHAR* format :
         {TEXT("%100000d"), TEXT("%100000s"), TEXT("%100000.1d"), TEXT("%100000I64x")}) {
        const Formatted formatted = FormatInto(3, format, int64_t{0});
        EXPECT_EQ(-1, formatted.result);
        EXPECT_EQ(TEXT("   ?"), formatted.units);
    }
    const Formatted zeros = FormatInto(3, TEXT("%0100000d"), 7);
    EXPECT_EQ(-1, zeros.result);
    EXPECT_EQ(TEXT("000?"), zeros.units);
    const Formatted left = FormatInto(3, TEXT("%-100000d"), 7);
    EXPECT_EQ(-1, left.result);
    EXPECT_EQ(TEXT("7  ?"), left.units);
}
