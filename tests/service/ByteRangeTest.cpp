#include "ByteRange.h"

#include <gtest/gtest.h>

#include <ostream>

static void PrintTo(const ByteRange& range, std::ostream* stream) {
    *stream << "kind " << static_cast<int>(range.kind) << ", first " << range.first << ", length "
            << range.length;
}

namespace {

constexpr ByteRange whole{};
constexpr ByteRange unsatisfiable{RangeKind::unsatisfiable, 0, 0};

ByteRange Part(uint64_t first, uint64_t length) {
    return {RangeKind::part, first, length};
}

}  // namespace

TEST(ByteRange, PartWithinTheFile) {
    EXPECT_EQ(ByteRangeOf("bytes=0-9", 100), Part(0, 10));
    EXPECT_EQ(ByteRangeOf("bytes=7-7", 100), Part(7, 1));
    EXPECT_EQ(ByteRangeOf("bytes=0-99", 100), Part(0, 100));
    EXPECT_EQ(ByteRangeOf("bytes=099-0099", 100), Part(99, 1));
}

TEST(ByteRange, PartBeyondFourGigabytes) {
    EXPECT_EQ(ByteRangeOf("bytes=4294967296-4294967305", 5000000000), Part(4294967296, 10));
}

TEST(ByteRange, RangeBeyondTheEndEndsWithTheFile) {
    EXPECT_EQ(ByteRangeOf("bytes=90-100", 100), Part(90, 10));
    EXPECT_EQ(ByteRangeOf("bytes=99-18446744073709551615", 100), Part(99, 1));
    EXPECT_EQ(ByteRangeOf("bytes=0-99999999999999999999999", 100), Part(0, 100));
}

TEST(ByteRange, RangeWithoutAnEndGoesToTheEndOfTheFile) {
    EXPECT_EQ(ByteRangeOf("bytes=0-", 100), Part(0, 100));
    EXPECT_EQ(ByteRangeOf("bytes=99-", 100), Part(99, 1));
}

TEST(ByteRange, RangeWithoutABeginIsTheLastBytes) {
    EXPECT_EQ(ByteRangeOf("bytes=-5", 100), Part(95, 5));
    EXPECT_EQ(ByteRangeOf("bytes=-100", 100), Part(0, 100));
    EXPECT_EQ(ByteRangeOf("bytes=-101", 100), Part(0, 100));
    EXPECT_EQ(ByteRangeOf("bytes=-99999999999999999999999", 100), Part(0, 100));
}

TEST(ByteRange, NothingOfItInTheFileIsUnsatisfiable) {
    EXPECT_EQ(ByteRangeOf("bytes=100-", 100), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=100-100", 100), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=4294967296-4294967305", 100), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=99999999999999999999999-", 100), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=-0", 100), unsatisfiable);
}

TEST(ByteRange, EndBeforeTheBeginIsUnsatisfiable) {
    EXPECT_EQ(ByteRangeOf("bytes=5-4", 100), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=1-0", 100), unsatisfiable);
}

TEST(ByteRange, EmptyFileHasNoPart) {
    EXPECT_EQ(ByteRangeOf("bytes=0-", 0), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=0-0", 0), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=-0", 0), unsatisfiable);
    EXPECT_EQ(ByteRangeOf("bytes=-1", 0), whole);
}

TEST(ByteRange, WhatIsNoSingleRangeOfBytesMeansTheWholeFile) {
    for (const char* header :
         {"", "bytes", "bytes=", "bytes=-", "bytes=5", "bytes=a-b", "bytes=0-b", "bytes=0x0-9", "bytes=-5-4",
          "bytes=+1-2", "bytes= 1-2", "bytes=1-2 ", "bytes=--1", "bytes=0-1,3-4", "lines=0-9", "0-9"}) {
        EXPECT_EQ(ByteRangeOf(header, 100), whole) << header;
    }
}
