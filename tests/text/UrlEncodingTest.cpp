#include "text/UrlEncoding.h"

#include <gtest/gtest.h>

namespace {

constexpr std::string_view marks = "$-_.!*'()";

WideString Unit(unsigned code) {
    return WideString(1, static_cast<WCHAR>(code));
}

bool IsLetterOrDigit(unsigned code) {
    return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

bool HasPassingLowByte(unsigned code) {
    const auto low = static_cast<char>(code & 0xFF);
    return low == 0 || marks.find(low) != std::string_view::npos;
}

}  // namespace

TEST(UrlEncode, EmptyTextStaysEmpty) {
    EXPECT_EQ(WideString(), UrlEncode(TEXT("")));
}

TEST(UrlEncode, SpaceSeparatorsAndTilde) {
    EXPECT_EQ(TEXT("a+b%26c%3dd%7e"), UrlEncode(TEXT("a b&c=d~")));
}

TEST(UrlEncode, AsciiLettersAndDigitsStay) {
    const WideString text = TEXT("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789");
    EXPECT_EQ(text, UrlEncode(text));
}

TEST(UrlEncode, NineMarksStay) {
    EXPECT_EQ(TEXT("$-_.!*'()"), UrlEncode(TEXT("$-_.!*'()")));
}

TEST(UrlEncode, DotBetweenLettersStays) {
    EXPECT_EQ(TEXT("a.b"), UrlEncode(TEXT("a.b")));
}

TEST(UrlEncode, UnitsOfTheFormatItselfAreEscaped) {
    EXPECT_EQ(TEXT("%7e"), UrlEncode(TEXT("~")));
    EXPECT_EQ(TEXT("%2b"), UrlEncode(TEXT("+")));
    EXPECT_EQ(TEXT("%25"), UrlEncode(TEXT("%")));
    EXPECT_EQ(TEXT("%26"), UrlEncode(TEXT("&")));
    EXPECT_EQ(TEXT("%3d"), UrlEncode(TEXT("=")));
    EXPECT_EQ(TEXT("%2f"), UrlEncode(TEXT("/")));
    EXPECT_EQ(TEXT("%23"), UrlEncode(TEXT("#")));
}

TEST(UrlEncode, ControlUnitsAreEscapedWithTwoDigits) {
    EXPECT_EQ(TEXT("%09"), UrlEncode(TEXT("\t")));
    EXPECT_EQ(TEXT("%0a"), UrlEncode(TEXT("\n")));
    EXPECT_EQ(TEXT("%0d"), UrlEncode(TEXT("\r")));
    EXPECT_EQ(TEXT("%01"), UrlEncode(Unit(0x01)));
    EXPECT_EQ(TEXT("%1a"), UrlEncode(Unit(0x1A)));
}

TEST(UrlEncode, UnitsFromU0080ToU00FFAreNeitherLettersNorDigits) {
    EXPECT_EQ(TEXT("%80"), UrlEncode(Unit(0x80)));
    EXPECT_EQ(TEXT("%aa"), UrlEncode(Unit(0xAA)));
    EXPECT_EQ(TEXT("%b2"), UrlEncode(Unit(0xB2)));
    EXPECT_EQ(TEXT("%e9"), UrlEncode(Unit(0xE9)));
    EXPECT_EQ(TEXT("%ff"), UrlEncode(Unit(0xFF)));
}

TEST(UrlEncode, HighByteIsDroppedWithoutUtf8) {
    EXPECT_EQ(TEXT("%ac"), UrlEncode(Unit(0x20AC)));
    EXPECT_EQ(TEXT("%92"), UrlEncode(Unit(0x2192)));
}

TEST(UrlEncode, UnitAboveU00FFWithTheLowByteOfALetterIsEscaped) {
    EXPECT_EQ(TEXT("%41"), UrlEncode(Unit(0x0141)));
    EXPECT_EQ(TEXT("%30"), UrlEncode(Unit(0x0430)));
}

TEST(UrlEncode, UnitAboveU00FFWithTheLowByteOfASpaceIsEscapedNotPlus) {
    EXPECT_EQ(TEXT("%20"), UrlEncode(Unit(0x0120)));
}

TEST(UrlEncode, UnitsWithLowByteZeroPassWithTheirHighByte) {
    for (const unsigned code : {0x0000u, 0x0100u, 0x2000u, 0xD800u, 0xFF00u}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(Unit(code), UrlEncode(Unit(code)));
    }
}

TEST(UrlEncode, UnitsAboveU00FFWithTheLowByteOfAMarkPassWithTheirHighByte) {
    for (const unsigned code : {0x012Du, 0x2024u, 0xFF29u, 0xDC2Au}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(Unit(code), UrlEncode(Unit(code)));
    }
}

TEST(UrlEncode, NulInsideTheTextDoesNotEndIt) {
    EXPECT_EQ(TEXT("a") + Unit(0) + TEXT("%26"), UrlEncode(TEXT("a") + Unit(0) + TEXT("&")));
}

TEST(UrlEncode, SurrogatesAreTwoUnits) {
    EXPECT_EQ(TEXT("%3d%3c"), UrlEncode(Unit(0xD83D) + Unit(0xDE3C)));
}

TEST(UrlEncode, EveryUnitFollowsTheFourRules) {
    const WideString digits = TEXT("0123456789abcdef");
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        WideString expected = TEXT("%");
        expected += digits[(code >> 4) & 0xF];
        expected += digits[code & 0xF];
        if (code == ' ') expected = TEXT("+");
        if (IsLetterOrDigit(code) || HasPassingLowByte(code)) expected = Unit(code);
        ASSERT_EQ(expected, UrlEncode(Unit(code))) << "unit " << code;
    }
}

TEST(UrlDecode, EmptyTextStaysEmpty) {
    EXPECT_EQ(WideString(), UrlDecode(TEXT("")));
}

TEST(UrlDecode, PlusAndEscapesOfEitherCase) {
    EXPECT_EQ(TEXT("a b&c=d"), UrlDecode(TEXT("a+b%26c%3Dd")));
    EXPECT_EQ(TEXT("=="), UrlDecode(TEXT("%3d%3D")));
    EXPECT_EQ(Unit(0xAB) + Unit(0xAB), UrlDecode(TEXT("%aB%Ab")));
}

TEST(UrlDecode, PercentAsTheLastUnitIsDropped) {
    EXPECT_EQ(TEXT("100"), UrlDecode(TEXT("100%")));
    EXPECT_EQ(WideString(), UrlDecode(TEXT("%")));
}

TEST(UrlDecode, PercentWithOneUnitAfterItIsDroppedWithThatUnit) {
    EXPECT_EQ(TEXT("x"), UrlDecode(TEXT("x%4")));
    EXPECT_EQ(TEXT("x"), UrlDecode(TEXT("x%%")));
    EXPECT_EQ(TEXT("x"), UrlDecode(TEXT("x%+")));
    EXPECT_EQ(WideString(), UrlDecode(TEXT("%4")));
}

TEST(UrlDecode, EscapeAtTheVeryEndIsDecoded) {
    EXPECT_EQ(TEXT("xA"), UrlDecode(TEXT("x%41")));
}

TEST(UrlDecode, InvalidEscapeIsKept) {
    EXPECT_EQ(TEXT("%zz"), UrlDecode(TEXT("%zz")));
}

TEST(UrlDecode, OneInvalidDigitMakesTheEscapeInvalid) {
    EXPECT_EQ(TEXT("%4g"), UrlDecode(TEXT("%4g")));
    EXPECT_EQ(TEXT("%g4"), UrlDecode(TEXT("%g4")));
}

TEST(UrlDecode, PercentInsideAnInvalidEscapeStartsNoEscape) {
    EXPECT_EQ(TEXT("%G%41"), UrlDecode(TEXT("%G%41")));
    EXPECT_EQ(TEXT("%%41"), UrlDecode(TEXT("%%41")));
    EXPECT_EQ(TEXT("%%%A"), UrlDecode(TEXT("%%%%41")));
}

TEST(UrlDecode, PlusInsideAnInvalidEscapeStaysAPlus) {
    EXPECT_EQ(TEXT("%++ "), UrlDecode(TEXT("%+++")));
    EXPECT_EQ(TEXT("%4+"), UrlDecode(TEXT("%4+")));
}

TEST(UrlDecode, NoUtf8IsAssembled) {
    EXPECT_EQ(Unit(0xC3) + Unit(0xA9), UrlDecode(TEXT("%c3%a9")));
}

TEST(UrlDecode, EveryEscapeGivesItsUnit) {
    for (unsigned code = 0; code <= 0xFF; ++code) {
        const WideString upper = TEXT("0123456789ABCDEF");
        const WideString escape =
            TEXT("%") + WideString(1, upper[code >> 4]) + WideString(1, upper[code & 0xF]);
        ASSERT_EQ(Unit(code), UrlDecode(escape)) << "unit " << code;
    }
}

TEST(UrlDecode, UnitsThatLookLikeDigitsInTheirLowByteAreNone) {
    const WideString text = TEXT("%") + Unit(0x0134) + Unit(0x0131);
    EXPECT_EQ(text, UrlDecode(text));
}

TEST(UrlDecode, OtherUnitsStayAsTheyAre) {
    const WideString text =
        TEXT("a&=#\t") + Unit(0) + Unit(0xE9) + Unit(0x20AC) + Unit(0x0125) + Unit(0x012B);
    EXPECT_EQ(text, UrlDecode(text));
}

TEST(UrlEncode, LongTextIsEncodedWhole) {
    EXPECT_EQ(WideString(1000, 'a') + TEXT("%e9"), UrlEncode(WideString(1000, 'a') + WideString(1, 0xE9)));
}
