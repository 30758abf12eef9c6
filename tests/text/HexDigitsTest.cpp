#include "text/HexDigits.h"

#include <gtest/gtest.h>

TEST(HexDigits, EveryDigitOfEitherCaseHasItsValue) {
    const WideString lower = TEXT("0123456789abcdef");
    const WideString upper = TEXT("0123456789ABCDEF");
    for (int value = 0; value < 16; ++value) {
        SCOPED_TRACE(value);
        EXPECT_EQ(value, HexDigitValue(lower[static_cast<size_t>(value)]));
        EXPECT_EQ(value, HexDigitValue(upper[static_cast<size_t>(value)]));
    }
}

TEST(HexDigits, ExactlyTwentyTwoOfAllUnitsAreDigits) {
    int digits = 0;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit)
        if (HexDigitValue(static_cast<WCHAR>(unit)) != -1) ++digits;
    EXPECT_EQ(22, digits);
}

TEST(HexDigits, NeighboursOfTheDigitsAreNone) {
    for (const char unit : {'/', ':', '@', 'G', '`', 'g'}) {
        SCOPED_TRACE(unit);
        EXPECT_EQ(-1, HexDigitValue(static_cast<WCHAR>(unit)));
    }
}

TEST(HexDigits, ByteIsAddedAsTwoLowerCaseDigits) {
    WideString text = TEXT("x");
    for (const int number : {0x00, 0x0A, 0x10, 0x7F, 0xA5, 0xFF})
        AppendHexByte(text, static_cast<uint8_t>(number));
    EXPECT_EQ(TEXT("x000a107fa5ff"), text);
}
