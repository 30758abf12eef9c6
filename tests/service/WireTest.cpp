#include <gtest/gtest.h>

#include "WireReader.h"
#include "WireWriter.h"

using namespace std::string_view_literals;

TEST(WireReader, Int32IsLittleEndianTwosComplement) {
    WireReader reader("\x78\x56\x34\x12\xFE\xFF\xFF\xFF\x00\x00\x00\x80"sv);
    EXPECT_EQ(reader.ReadInt32(), 0x12345678);
    EXPECT_EQ(reader.ReadInt32(), -2);
    EXPECT_EQ(reader.ReadInt32(), INT32_MIN);
    EXPECT_EQ(reader.Remaining(), 0u);
}

TEST(WireReader, FewerThanFourBytesAreNoInt32AndStay) {
    for (const std::string_view bytes : {""sv, "\1"sv, "\1\2"sv, "\1\2\3"sv}) {
        WireReader reader(bytes);
        EXPECT_EQ(reader.ReadInt32(), std::nullopt);
        EXPECT_EQ(reader.Remaining(), bytes.size());
    }
}

TEST(WireWriter, Int32IsLittleEndianTwosComplement) {
    WireWriter writer;
    writer.WriteInt32(0x12345678);
    writer.WriteInt32(-2);
    writer.WriteInt32(INT32_MIN);
    EXPECT_EQ(writer.TakeBytes(), "\x78\x56\x34\x12\xFE\xFF\xFF\xFF\x00\x00\x00\x80"sv);
}

TEST(WireWriter, EmptyStringIsFourZeroBytes) {
    WireWriter writer;
    writer.WriteString("");
    EXPECT_EQ(writer.TakeBytes(), "\0\0\0\0"sv);
}

TEST(WireWriter, StringCountsUnitsNotBytesNorCharacters) {
    WireWriter writer;
    writer.WriteString("\xC3\x8Eh\xF0\x9F\x97\xBA");
    EXPECT_EQ(writer.TakeBytes(), "\4\0\0\0\xCE\0h\0\x3D\xD8\xFA\xDD"sv);
}

TEST(WireWriter, TakingTheBytesLeavesNone) {
    WireWriter writer;
    writer.WriteInt32(1);
    EXPECT_EQ(writer.TakeBytes().size(), 4u);
    EXPECT_EQ(writer.TakeBytes(), "");
}
