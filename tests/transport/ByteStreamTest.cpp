#include "transport/ByteStream.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/MemoryStream.h"

using namespace std::string_view_literals;

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
