#include <gtest/gtest.h>

#include "Samples.h"
#include "files/TableFile.h"

namespace {

std::string Swapped(std::string bytes) {
    for (size_t at = 0; at + 1 < bytes.size(); at += 2)
        std::swap(bytes[at], bytes[at + 1]);
    return bytes;
}

const std::vector<WideString> oneRecord = {
    u"Open\t\xD6"
    u"ffnen\r"};

}  // namespace

TEST(TableEncoding, LanguageFileIsUtf16AfterAMark) {
    const TableText table =
        DecodeTable(Utf16Bytes(u"\xFEFFOpen\t\xD6"
                               u"ffnen\r\n"));
    EXPECT_EQ(table.encoding, TableEncoding::Utf16);
    EXPECT_EQ(table.lines, oneRecord);
    EXPECT_FALSE(table.hasHalfUnit);
}

TEST(TableEncoding, Utf16IsFoundWithoutAMark) {
    const TableText table =
        DecodeTable(Utf16Bytes(u"Open\t\xD6"
                               u"ffnen\r\n"));
    EXPECT_EQ(table.encoding, TableEncoding::Utf16WithoutMark);
    EXPECT_EQ(table.lines, oneRecord);
    // A translation without any ASCII.
    EXPECT_EQ(DecodeTable(Utf16Bytes(u"Open\t\x41E\x442\x43A\x440\x44B\x442\x44C\n")).encoding,
              TableEncoding::Utf16WithoutMark);
}

TEST(TableEncoding, BigEndianIsFoundWithAndWithoutAMark) {
    for (const WideStringView mark : {u"\xFEFF", u""}) {
        const TableText table = DecodeTable(Swapped(Utf16Bytes(WideString(mark) + u"Open\t\xD6"
                                                                                  u"ffnen\r\n")));
        EXPECT_EQ(table.encoding, TableEncoding::Utf16BigEndian);
        EXPECT_EQ(table.lines, oneRecord);
    }
}

TEST(TableEncoding, Utf8IsFoundWithAndWithoutAMark) {
    for (const std::string mark : {"\xEF\xBB\xBF", ""}) {
        const TableText table = DecodeTable(mark +
                                            "Open\t\xC3\x96"
                                            "ffnen\r\n");
        EXPECT_EQ(table.encoding, TableEncoding::Utf8);
        EXPECT_EQ(table.lines, oneRecord);
    }
}

TEST(TableEncoding, BytesThatAreNoUtf8AreLatin1) {
    const TableText table = DecodeTable(
        "Open\t\xD6"
        "ffnen\r\n");
    EXPECT_EQ(table.encoding, TableEncoding::Latin1);
    EXPECT_EQ(table.lines, oneRecord);
    EXPECT_EQ(DecodeTable("Open\tOuvrir\n").encoding, TableEncoding::Latin1);
    EXPECT_EQ(DecodeTable("").encoding, TableEncoding::Latin1);
}

TEST(TableEncoding, BytesThatAreNoCharactersAreUnknown) {
    EXPECT_EQ(DecodeTable("Open\t\x93Ouvrir\x94\n").encoding, TableEncoding::Unknown);
    EXPECT_EQ(DecodeTable("\xEF\xBB\xBFOpen\t\xD6"
                          "ffnen\n")
                  .encoding,
              TableEncoding::Unknown);
}

TEST(TableEncoding, HalfAUnitIsToldAndLeftOut) {
    const TableText table = DecodeTable(Utf16Bytes(u"\xFEFFOpen\t\xD6"
                                                   u"ffnen\r\n") +
                                        "O");
    EXPECT_TRUE(table.hasHalfUnit);
    EXPECT_EQ(table.lines, oneRecord);
}

TEST(TableEncoding, LastLineNeedsNoEndAndEmptyLinesCount) {
    EXPECT_EQ(DecodeTable("\na\n\nb").lines, (std::vector<WideString>{u"", u"a", u"", u"b"}));
    EXPECT_EQ(DecodeTable("").lines, std::vector<WideString>());
}
