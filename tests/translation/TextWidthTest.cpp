/* How wide texts are. The widths of single characters are those of the font's bitmaps of 11 pixels. */
#include <gtest/gtest.h>

#include "texts/TextWidth.h"
#include "texts/WidthsOfTahoma.h"

namespace {

constexpr TextPlace message{TextKind::Message, "", "", 0, 0};

TextRoom InMessage(WideStringView text) {
    return NeededRoom(message, text);
}

}  // namespace

TEST(TextWidth, IsTheSumOfTheCharacters) {
    EXPECT_EQ(0, WidthOf(u""));
    EXPECT_EQ(10 + 2 + 3, WidthOf(u"Wi "));
    EXPECT_EQ(6 + 6, WidthOf(u"\u00E4\u20AC"));
}

TEST(TextWidth, CharactersOfEastAsiaAreAsWideAsHigh) {
    for (const WCHAR unit : {u'\u1100', u'\u2E80', u'\u3042', u'\u4E00', u'\uAC00', u'\uF900', u'\uFF21'}) {
        EXPECT_EQ(-1, WidthInTahoma(unit));
        EXPECT_EQ(11, WidthOf(WideString(1, unit)));
    }
}

TEST(TextWidth, OtherLettersThatTheFontLacksAreOfAverageWidth) {
    for (const WCHAR unit : {u'\u03B1', u'\u05D0', u'\u0E01', u'\u10D0', u'\u1F00'}) {
        EXPECT_EQ(-1, WidthInTahoma(unit));
        EXPECT_EQ(6, WidthOf(WideString(1, unit)));
    }
}

TEST(TextWidth, AccentsOverALetterTakeNoRoom) {
    EXPECT_EQ(-1, WidthInTahoma(u'\u0301'));
    EXPECT_EQ(WidthOf(u"e"), WidthOf(u"e\u0301"));
}

TEST(TextWidth, APairOfHalvesIsOneCharacter) {
    EXPECT_EQ(11, WidthOf(u"\U0001F600"));
}

TEST(TextWidth, TheRangesOfTheFontAreInOrderAndFull) {
    char16_t last = 0;
    for (const TahomaRange& range : widthsOfTahoma) {
        EXPECT_LT(last, range.first);
        EXPECT_EQ(range.last - range.first + 1, static_cast<int>(std::string_view(range.widths).size()));
        last = range.last;
    }
}

TEST(TextWidth, AmpersandsOfAccessKeysAreNotDrawn) {
    EXPECT_EQ(u"Open & close", WithoutAccessKeys(u"&Open && close&"));
}

TEST(TextWidth, LinesBreakAtBlanksThatTakeNoRoom) {
    const WideString sixteen(16, u'W');
    TextRoom needed = InMessage(sixteen + u"   " + sixteen);
    EXPECT_EQ(160, needed.width);
    EXPECT_EQ(2, needed.lines);
    needed = InMessage(u"a " + sixteen + u" b");
    EXPECT_EQ(160, needed.width);
    EXPECT_EQ(3, needed.lines);
}

TEST(TextWidth, LinesBreakWhereTheTextDoes) {
    const TextRoom needed = InMessage(u"W\n\nWW\n");
    EXPECT_EQ(20, needed.width);
    EXPECT_EQ(4, needed.lines);
}
