#include "transport/ByteStream.h"

#include <gtest/gtest.h>

#include <type_traits>

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

TEST(ByteStream, StartsNotOpenGoodAndWide) {
    const MemoryStream stream;
    EXPECT_EQ(ByteStream::notOpen, stream.mode);
    EXPECT_TRUE(stream.good);
    EXPECT_TRUE(stream.wideStrings);
    EXPECT_EQ(0u, stream.byteCount);
}

TEST(ByteStream, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<MemoryStream>);
    EXPECT_FALSE(std::is_copy_assignable_v<MemoryStream>);
}

TEST(ByteStream, Int32IsLittleEndianTwosComplement) {
    const struct {
        int32_t value;
        std::string_view bytes;
    } cases[] = {{0, "\0\0\0\0"sv},
                 {1, "\1\0\0\0"sv},
                 {101, "\x65\0\0\0"sv},
                 {-1, "\xFF\xFF\xFF\xFF"sv},
                 {0x12345678, "\x78\x56\x34\x12"sv},
                 {INT32_MAX, "\xFF\xFF\xFF\x7F"sv},
                 {INT32_MIN, "\0\0\0\x80"sv}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        MemoryStream written;
        written.WriteInt32(c.value);
        EXPECT_EQ(c.bytes, written.contents);
        EXPECT_EQ(1u, written.writes.size()) << "one Write for the value";

        MemoryStream read(c.bytes);
        int32_t value = 99;
        read.ReadInt32(value);
        EXPECT_EQ(c.value, value);
        EXPECT_TRUE(read.good);
    }
}

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

TEST(ByteStream, ByteCountAfterAnInt32AThreeUnitStringAnd32BytesIs46) {
    MemoryStream stream;
    stream.WriteInt32(8);
    stream.WriteString(TEXT("abc"));
    const char raw[32] = {};
    stream.WriteBytes(raw, sizeof raw);
    EXPECT_EQ(46u, stream.byteCount);
    EXPECT_EQ(46u, stream.contents.size());
}

TEST(ByteStream, WritingNeitherLooksAtGoodNorChangesIt) {
    MemoryStream stream;
    stream.good = false;
    stream.WriteInt32(1);
    EXPECT_FALSE(stream.good);
    EXPECT_EQ(4u, stream.contents.size());
    EXPECT_EQ(4u, stream.byteCount);
}

TEST(ByteStream, WhatWasWrittenReadsBack) {
    MemoryStream written;
    written.WriteInt32(-7);
    written.WriteString(TEXT("Zo\x00EB \xD83D\xDE00"));
    written.WriteBytes("raw", 3);
    written.WriteString({});

    MemoryStream read(written.contents);
    int32_t number = 0;
    WideString text;
    char raw[3];
    read.ReadInt32(number);
    EXPECT_TRUE(read.ReadString(text));
    read.ReadBytes(raw, sizeof raw);
    WideString empty = TEXT("not empty");
    EXPECT_TRUE(read.ReadString(empty));

    EXPECT_EQ(-7, number);
    EXPECT_EQ(TEXT("Zo\x00EB \xD83D\xDE00"), text);
    EXPECT_EQ("raw"sv, std::string_view(raw, 3));
    EXPECT_EQ(TEXT(""), empty);
    EXPECT_TRUE(read.good);
    EXPECT_EQ(written.byteCount, read.byteCount);
}

TEST(ByteStream, Int32ThatStraddlesTheEndSucceedsWithItsOtherBytesAsTheyWere) {
    MemoryStream stream("\x11\x22"sv);
    int32_t value = 0x77665544;
    stream.ReadInt32(value);
    EXPECT_TRUE(stream.good);
    EXPECT_EQ(0x77662211, value);

    stream.ReadInt32(value);
    EXPECT_FALSE(stream.good);
    EXPECT_EQ(0x77662211, value) << "a read that finds nothing leaves the value";
    EXPECT_EQ(8u, stream.byteCount) << "bytes are counted whether or not they came";
}

TEST(ByteStream, GoodStaysFalseWhenALaterReadSucceeds) {
    MemoryStream stream("\1\0\0\0"sv);
    stream.good = false;
    int32_t value = 0;
    stream.ReadInt32(value);
    EXPECT_EQ(1, value);
    EXPECT_FALSE(stream.good);
}

TEST(ByteStream, ReadBytesOfNoneClearsGood) {
    MemoryStream stream("abc"sv);
    char none = 'x';
    stream.ReadBytes(&none, 0);
    EXPECT_FALSE(stream.good);
    EXPECT_EQ('x', none);
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
