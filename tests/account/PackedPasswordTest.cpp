#include "account/PackedPassword.h"

#include <gtest/gtest.h>

#include <set>

namespace {

/* What the bytes hold beneath the scrambling: an empty password is the key alone. */
PackedPassword CodesOf(WideStringView password) {
    const PackedPassword key = PackPassword({});
    PackedPassword codes = PackPassword(password);
    for (size_t i = 0; i < codes.size(); ++i)
        codes[i] ^= key[i];
    return codes;
}

WideString Restored(WideStringView password) {
    return UnpackPassword(PackPassword(password), 16);
}

}  // namespace

TEST(PackedPassword, OfSixCharactersKeepsTheFourCodesOfItsLettersAndDigits) {
    const PackedPassword expected = {11, 12, 2, 34};
    EXPECT_EQ(expected, CodesOf(TEXT("Ab1-x!")));
    EXPECT_EQ(TEXT("ab1x"), Restored(TEXT("Ab1-x!")));
}

TEST(PackedPassword, CodesBeginAndEndWithTheirRanges) {
    const PackedPassword expected = {1, 10, 11, 36, 11, 36};
    EXPECT_EQ(expected, CodesOf(TEXT("09AZaz")));
    EXPECT_EQ(TEXT("09azaz"), Restored(TEXT("09AZaz")));
}

TEST(PackedPassword, NeighboursOfLettersAndDigitsHaveNoCode) {
    EXPECT_EQ(PackedPassword{}, CodesOf(TEXT("/:@[`{")));
}

TEST(PackedPassword, Of20LettersIsRestoredAsItsFirst16InLowerCase) {
    EXPECT_EQ(TEXT("abcdefghijklmnop"), Restored(TEXT("ABCDEFGHIJKLMNOPQRST")));
}

TEST(PackedPassword, CharactersWithoutACodeDoNotCountTowardsThe16) {
    EXPECT_EQ(TEXT("abcdefghijklmnop"), Restored(TEXT("a.b.c.d.e.f.g.h.i.j.k.l.m.n.o.p.q.r")));
}

TEST(PackedPassword, OfForeignLettersSurrogatesQuotesAndLineFeedsIsEmpty) {
    EXPECT_EQ(PackedPassword{}, CodesOf(TEXT("\xC4\xF6\x00DF\x4E2D\xD83D\xDE00\"\n")));
    EXPECT_EQ(TEXT(""), Restored(TEXT("\xC4\xF6\x4E2D")));
}

TEST(PackedPassword, FullWidthDigitsAreNoDigits) {
    EXPECT_EQ(TEXT(""), Restored(TEXT("\xFF10\xFF21")));
}

TEST(PackedPassword, LengthsAroundTheLimitAreKept) {
    EXPECT_EQ(TEXT(""), Restored(TEXT("")));
    EXPECT_EQ(TEXT("a"), Restored(TEXT("a")));
    EXPECT_EQ(WideString(15, u'x'), Restored(WideString(15, u'x')));
    EXPECT_EQ(WideString(16, u'x'), Restored(WideString(16, u'x')));
    EXPECT_EQ(WideString(16, u'x'), Restored(WideString(17, u'x')));
    EXPECT_EQ(WideString(16, u'x'), Restored(WideString(500, u'x')));
}

TEST(PackedPassword, KeyHasNoZeroByteAndIsNoRepeatedByte) {
    const PackedPassword key = PackPassword({});
    EXPECT_EQ(0u, std::set<uint8_t>(key.begin(), key.end()).count(0));
    EXPECT_GT(std::set<uint8_t>(key.begin(), key.end()).size(), 8u);
}

TEST(PackedPassword, OnlyTheBytesThatWereReadAreUnpacked) {
    const PackedPassword packed = PackPassword(TEXT("abcdefghijklmnop"));
    for (size_t count = 0; count <= 16; ++count)
        EXPECT_EQ(WideString(TEXT("abcdefghijklmnop")).substr(0, count), UnpackPassword(packed, count));
    EXPECT_EQ(TEXT("abcdefghijklmnop"), UnpackPassword(packed, 17));
}

TEST(PackedPassword, BytesThatStandForNothingGiveNothingAndTheRestIsKept) {
    PackedPassword packed = PackPassword({});
    for (size_t i = 0; i < packed.size(); ++i)
        packed[i] ^= static_cast<uint8_t>(i % 2 == 0 ? 37 : 12);
    EXPECT_EQ(TEXT("bbbbbbbb"), UnpackPassword(packed, 16));
    packed = PackPassword({});
    packed[3] ^= 0xFF;
    packed[4] ^= 1;
    EXPECT_EQ(TEXT("0"), UnpackPassword(packed, 16));
}
