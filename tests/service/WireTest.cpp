#include <gtest/gtest.h>

#include "WireReader.h"
#include "WireWriter.h"

using namespace std::string_literals;
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

TEST(WireReader, ByteIsUnsigned) {
    WireReader reader("\xFF\0"sv);
    EXPECT_EQ(reader.ReadByte(), 255);
    EXPECT_EQ(reader.ReadByte(), 0);
    EXPECT_EQ(reader.ReadByte(), std::nullopt);
}

TEST(WireReader, StringIsItsUnitsWhateverTheyHold) {
    WireReader reader("\5\0\0\0a\0\0\0\n\0\x3D\xD8\xAC\x20\0\0\0\0z"sv);
    const std::optional<WireString> text = reader.ReadString();
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->Size(), 5u);
    EXPECT_EQ((*text)[4], u'\u20AC');
    EXPECT_EQ(text->Text(), (std::u16string{u'a', 0, u'\n', 0xD83D, u'\u20AC'}));
    const std::optional<WireString> empty = reader.ReadString();
    ASSERT_TRUE(empty.has_value());
    EXPECT_EQ(empty->Text(), u"");
    EXPECT_EQ(reader.Remaining(), 1u);
}

TEST(WireReader, StringOf100000UnitsIsTakenAndALongerOneStays) {
    const std::string units(200002, 'x');
    const std::string longest = "\xA0\x86\1\0"s + units;
    WireReader reader(longest);
    EXPECT_EQ(reader.ReadString().value().Size(), 100000u);
    EXPECT_EQ(reader.Remaining(), 2u);
    const std::string tooLong = "\xA1\x86\1\0"s + units;
    WireReader refusing(tooLong);
    EXPECT_FALSE(refusing.ReadString().has_value());
    EXPECT_EQ(refusing.Remaining(), tooLong.size());
}

TEST(WireReader, StringsWithoutAllTheirBytesAreNoneAndStay) {
    for (const std::string_view bytes : {""sv, "\0\0\0"sv, "\1\0\0\0"sv, "\1\0\0\0a"sv, "\2\0\0\0a\0b"sv,
                                         "\xFF\xFF\xFF\xFF"sv, "\0\0\0\x80"sv, "\xFF\xFF\xFF\x7F"sv}) {
        WireReader reader(bytes);
        EXPECT_FALSE(reader.ReadString().has_value());
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
