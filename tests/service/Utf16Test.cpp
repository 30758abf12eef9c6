#include "Utf16.h"

#include <gtest/gtest.h>

TEST(Utf16, EmptyTextStaysEmpty) {
    EXPECT_EQ(Utf16Of(""), u"");
}

TEST(Utf16, CharactersOfOneTwoAndThreeBytesAreOneUnitEach) {
    EXPECT_EQ(Utf16Of("a\xC3\x8E\xE2\x82\xAC"), u"a\u00CE\u20AC");
}

TEST(Utf16, CharacterOfFourBytesIsAPairOfUnits) {
    EXPECT_EQ(Utf16Of("\xF0\x9F\x97\xBA"), u"\xD83D\xDDFA");
}

TEST(Utf16, SmallestAndLargestOfEachLengthArePreserved) {
    EXPECT_EQ(Utf16Of("\x7F\xC2\x80\xDF\xBF"), u"\x7F\x80\u07FF");
    EXPECT_EQ(Utf16Of("\xE0\xA0\x80\xEF\xBF\xBF"), u"\u0800\xFFFF");
    EXPECT_EQ(Utf16Of("\xED\x9F\xBF\xEE\x80\x80"), u"\xD7FF\xE000");
    EXPECT_EQ(Utf16Of("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), u"\xD800\xDC00\xDBFF\xDFFF");
}

TEST(Utf16, ZeroByteIsAUnit) {
    EXPECT_EQ(Utf16Of(std::string_view("a\0b", 3)), std::u16string_view(u"a\0b", 3));
}

TEST(Utf16, BytesThatAreNoCharacterBecomeReplacements) {
    struct Case {
        const char* what;
        const char* bytes;
        std::u16string_view units;
    };
    const Case cases[] = {
        {"a lone continuation", "a\x80z", u"a\uFFFDz"},
        {"a lead without its continuation", "\xC3z", u"\uFFFDz"},
        {"a character cut short at the end", "z\xE2\x82", u"z\uFFFD\uFFFD"},
        {"an overlong slash of two bytes", "\xC0\xAF", u"\uFFFD\uFFFD"},
        {"an overlong slash of three bytes", "\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},
        {"an overlong character of four bytes", "\xF0\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"a surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
        {"beyond the last character", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"a byte that never occurs", "\xFF", u"\uFFFD"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        EXPECT_EQ(Utf16Of(each.bytes), each.units);
    }
}

TEST(Utf16, SmallestAndLargestOfEachLengthBecomeTheSameUtf8) {
    EXPECT_EQ(Utf8Of(u"\x7F\x80\u07FF"), "\x7F\xC2\x80\xDF\xBF");
    EXPECT_EQ(Utf8Of(u"\u0800\xFFFF"), "\xE0\xA0\x80\xEF\xBF\xBF");
    EXPECT_EQ(Utf8Of(u"\xD7FF\xE000"), "\xED\x9F\xBF\xEE\x80\x80");
    EXPECT_EQ(Utf8Of(u"\xD800\xDC00\xDBFF\xDFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    EXPECT_EQ(Utf8Of({u"a\0b", 3}), std::string("a\0b", 3));
    EXPECT_EQ(Utf8Of(u""), "");
}

TEST(Utf16, HalfSurrogatesBecomeReplacementsInUtf8) {
    EXPECT_EQ(Utf8Of(u"a\xD83D"), "a\xEF\xBF\xBD");
    EXPECT_EQ(Utf8Of(u"\xDDFA\xD83Dz"), "\xEF\xBF\xBD\xEF\xBF\xBDz");
    EXPECT_EQ(Utf8Of(u"\xD83D\xD83D\xDDFA"), "\xEF\xBF\xBD\xF0\x9F\x97\xBA");
}

TEST(Utf16, CodePointsKeepHalfSurrogatesAndJoinPairs) {
    EXPECT_EQ(CodePointsOf(u"\xDDFA\xD83D\xDDFA\xD83D"), (std::u32string{0xDDFA, 0x1F5FA, 0xD83D}));
}

TEST(Utf16, CodePointsBecomeTheUnitsThatTheyCameFrom) {
    std::u16string units;
    for (const char32_t value : {U'a', char32_t{0xDDFA}, char32_t{0x1F5FA}, char32_t{0x10FFFF}})
        AppendUtf16(units, value);
    EXPECT_EQ(units, u"a\xDDFA\xD83D\xDDFA\xDBFF\xDFFF");
}
