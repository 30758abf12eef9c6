/* Strings on the wire: how they are written, and what becomes of those that are too long or end early. */
#include "transport/ByteStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "support/MemoryStream.h"

using namespace std::string_view_literals;

namespace {

std::string Wide(size_t units) {
    std::string bytes;
    for (size_t i = 0; i < units; ++i) {
        bytes += static_cast<char>('a' + i % 26);
        bytes += '\0';
    }
    return bytes;
}

std::string Int32(uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

}  // namespace

TEST(ByteStream, EmptyStringIsFourZeroBytes) {
    MemoryStream stream;
    stream.WriteString({});
    EXPECT_EQ("\0\0\0\0"sv, stream.contents);
    EXPECT_EQ(4u, stream.byteCount);
}

TEST(ByteStream, StringIsItsLengthAndItsUnitsWithoutTerminator) {
    MemoryStream stream;
    stream.WriteString(TEXT("A\x20AC\xD83D"));
    EXPECT_EQ("\3\0\0\0A\0\xAC\x20\x3D\xD8"sv, stream.contents);
}

TEST(ByteStream, StringIsOneWriteForTheLengthAndOneForEachUnit) {
    MemoryStream wide;
    wide.WriteString(TEXT("abc"));
    EXPECT_EQ((std::vector<uint32_t>{4, 2, 2, 2}), wide.writes);

    MemoryStream narrow;
    narrow.wideStrings = false;
    narrow.WriteString(TEXT("abc"));
    EXPECT_EQ((std::vector<uint32_t>{4, 1, 1, 1}), narrow.writes);
}

TEST(ByteStream, NarrowStringKeepsTheLowEightBitsOfEachUnit) {
    MemoryStream stream;
    stream.wideStrings = false;
    stream.WriteString(TEXT("A\x20AC\x00E9"));
    EXPECT_EQ("\3\0\0\0A\xAC\xE9"sv, stream.contents);
    EXPECT_EQ(7u, stream.byteCount);
}

TEST(ByteStream, NarrowByteE9ReadsBackAsUnitFFE9) {
    MemoryStream stream("\2\0\0\0A\xE9"sv);
    stream.wideStrings = false;
    WideString text;
    EXPECT_TRUE(stream.ReadString(text));
    ASSERT_EQ(2u, text.size());
    EXPECT_EQ(0x0041, text[0]);
    EXPECT_EQ(0xFFE9, text[1]);
    EXPECT_EQ(6u, stream.byteCount);
}

TEST(ByteStream, NarrowBytesFrom80ToFFAreWidenedWithTheirSign) {
    MemoryStream stream("\3\0\0\0\x7F\x80\xFF"sv);
    stream.wideStrings = false;
    WideString text;
    EXPECT_TRUE(stream.ReadString(text));
    EXPECT_EQ((WideString{0x007F, 0xFF80, 0xFFFF}), text);
}

TEST(ByteStream, LengthOf100000IsAccepted) {
    MemoryStream stream(Int32(100000) + Wide(100000));
    WideString text;
    EXPECT_TRUE(stream.ReadString(text));
    EXPECT_TRUE(stream.good);
    EXPECT_EQ(100000u, text.size());
    EXPECT_EQ(200004u, stream.byteCount);
}

TEST(ByteStream, LengthsOf100001AndNegativeOnesAreRefusedWithGoodStillTrue) {
    for (const uint32_t length : {100001u, 0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu}) {
        SCOPED_TRACE(length);
        MemoryStream stream(Int32(length) + Wide(10));
        WideString text = TEXT("before");
        EXPECT_FALSE(stream.ReadString(text));
        EXPECT_TRUE(stream.good);
        EXPECT_EQ(TEXT(""), text);
        EXPECT_EQ(20u, stream.Unread()) << "none of the units is consumed";
        EXPECT_EQ(4u, stream.byteCount);
    }
}

TEST(ByteStream, StringWithoutItsLengthIsEmptyAndClearsGood) {
    MemoryStream stream;
    WideString text = TEXT("before");
    EXPECT_FALSE(stream.ReadString(text));
    EXPECT_FALSE(stream.good);
    EXPECT_EQ(TEXT(""), text);
}

TEST(ByteStream, StringThatEndsEarlyKeepsTheUnitsThatCame) {
    MemoryStream stream(Int32(5) + Wide(2));
    WideString text;
    EXPECT_FALSE(stream.ReadString(text));
    EXPECT_FALSE(stream.good);
    EXPECT_EQ(TEXT("ab"), text);
    EXPECT_EQ(10u, stream.byteCount)
        << "the unit that did not come is counted, those after it are not asked for";
}

TEST(ByteStream, HalfAUnitAtTheEndIsAUnitWithAZeroHighByte) {
    MemoryStream stream(Int32(3) + Wide(1) + "b");
    WideString text;
    EXPECT_FALSE(stream.ReadString(text));
    EXPECT_EQ(TEXT("ab"), text);
}

TEST(ByteStream, StringOnAStreamThatHasFailedIsRefusedThoughItsBytesAreThere) {
    MemoryStream stream(Int32(2) + Wide(2));
    stream.good = false;
    WideString text;
    EXPECT_FALSE(stream.ReadString(text));
    EXPECT_EQ(4u, stream.Unread()) << "the length is read all the same";
}

TEST(ByteStream, FixedStringOf150UnitsIntoCapacity100IsCutTo99AndATerminator) {
    MemoryStream stream(Int32(150) + Wide(150));
    WCHAR field[101];
    std::fill(std::begin(field), std::end(field), WCHAR{0x7777});
    EXPECT_TRUE(stream.ReadFixedString(field, 100));
    EXPECT_EQ(99u, WideStringView(field).size());
    EXPECT_EQ(TEXT('a') + 98 % 26, field[98]);
    EXPECT_EQ(0, field[99]);
    EXPECT_EQ(0x7777, field[100]) << "nothing is written behind the field";
    EXPECT_EQ(304u, stream.byteCount) << "the whole string is taken in";
    EXPECT_EQ(0u, stream.Unread());
}

TEST(ByteStream, FixedStringOfExactlyTheCapacityLosesItsLastUnit) {
    MemoryStream stream(Int32(4) + Wide(4));
    WCHAR field[4];
    EXPECT_TRUE(stream.ReadFixedString(field, 4));
    EXPECT_EQ(TEXT("abc"), WideString(field));
}

TEST(ByteStream, FixedStringOneShorterThanTheCapacityIsWhole) {
    MemoryStream stream(Int32(3) + Wide(3));
    WCHAR field[4];
    EXPECT_TRUE(stream.ReadFixedString(field, 4));
    EXPECT_EQ(TEXT("abc"), WideString(field));
}

TEST(ByteStream, ShorterFixedStringFillsItsFieldWithZeros) {
    MemoryStream stream(Int32(2) + Wide(2));
    WCHAR field[] = {9, 9, 9, 9, 9, 9};
    EXPECT_TRUE(stream.ReadFixedString(field, 5));
    EXPECT_EQ((WideString{TEXT('a'), TEXT('b'), 0, 0, 0, 9}), WideString(field, 6));
}

TEST(ByteStream, FixedStringEndsAtANulInsideIt) {
    MemoryStream stream("\3\0\0\0a\0\0\0c\0"sv);
    WCHAR field[] = {9, 9, 9, 9};
    EXPECT_TRUE(stream.ReadFixedString(field, 4));
    EXPECT_EQ((WideString{TEXT('a'), 0, 0, 0}), WideString(field, 4));
}

TEST(ByteStream, FixedStringThatFailsLeavesItsFieldUntouched) {
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {{"no length", ""}, {"too long", Int32(100001)}, {"ends early", Int32(3) + Wide(2)}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MemoryStream stream(c.bytes);
        WCHAR field[] = {9, 9, 9, 9};
        EXPECT_FALSE(stream.ReadFixedString(field, 4));
        EXPECT_EQ((WideString{9, 9, 9, 9}), WideString(field, 4));
    }
}
