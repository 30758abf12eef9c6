#include "text/LineReader.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/OwnedFile.h"
#include "support/DeviceTest.h"

using namespace std::string_view_literals;

namespace {

using Lines = std::vector<WideString>;

class LineReaderTest : public DeviceTest {
protected:
    static WideString Path() { return PathOf(TEXT("lines.txt")); }

    static FileHandle Open(std::string_view bytes, const WCHAR* mode = TEXT("r")) {
        PutFile(Path(), bytes);
        return FileHandle(_wfopen(Path().c_str(), mode));
    }

    static Lines LinesOf(std::string_view bytes, const WCHAR* mode = TEXT("r")) {
        const FileHandle file = Open(bytes, mode);
        EXPECT_TRUE(file);
        Lines lines;
        WideString line;
        LineReader reader(file.Get());
        while (reader.ReadContentLine(line))
            lines.push_back(line);
        EXPECT_EQ(WideString(), line) << "after the last line the string is empty";
        EXPECT_FALSE(reader.ReadContentLine(line)) << "the end stays the end";
        return lines;
    }
};

}  // namespace

TEST_F(LineReaderTest, WithoutAStreamThereIsNoLineAndTheStringStays) {
    WideString line = TEXT("before");
    EXPECT_FALSE(LineReader(nullptr).ReadContentLine(line));
    EXPECT_EQ(TEXT("before"), line);
}

TEST_F(LineReaderTest, EmptyFileHasNoLines) {
    EXPECT_EQ(Lines(), LinesOf(""));
}

TEST_F(LineReaderTest, AtTheEndTheStringIsEmptied) {
    const FileHandle file = Open("");
    WideString line = TEXT("before");
    EXPECT_FALSE(LineReader(file.Get()).ReadContentLine(line));
    EXPECT_EQ(WideString(), line);
}

TEST_F(LineReaderTest, EndOfFileIndicatorAlreadySetMeansNoLine) {
    const FileHandle file = Open("a\nb\n", TEXT("rb"));
    while (fgetc(file.Get()) != EOF)
        continue;
    WideString line = TEXT("before");
    EXPECT_FALSE(LineReader(file.Get()).ReadContentLine(line));
    EXPECT_EQ(WideString(), line);
}

TEST_F(LineReaderTest, CommentBlankLineTabbedLineAndLastLineWithoutItsEnd) {
    EXPECT_EQ((Lines{TEXT("\tkey=1"), TEXT("last")}), LinesOf("  # note\r\n\r\n\tkey=1\r\nlast"));
}

TEST_F(LineReaderTest, LastLineWithoutALineFeedIsDeliveredAndTheIndicatorIsSetThen) {
    const FileHandle file = Open("first\nlast");
    WideString line;
    LineReader reader(file.Get());
    EXPECT_TRUE(reader.ReadContentLine(line));
    EXPECT_EQ(TEXT("first"), line);
    EXPECT_TRUE(reader.ReadContentLine(line));
    EXPECT_EQ(TEXT("last"), line);
    EXPECT_TRUE(feof(file.Get()));
    EXPECT_FALSE(reader.ReadContentLine(line));
}

TEST_F(LineReaderTest, LinesEndAtLineFeedWithOrWithoutCarriageReturnInEitherMode) {
    for (const WCHAR* mode : {TEXT("r"), TEXT("rb")}) {
        SCOPED_TRACE(mode[1] ? "binary" : "text");
        EXPECT_EQ((Lines{TEXT("a"), TEXT("b"), TEXT("c")}), LinesOf("a\nb\r\nc\n", mode));
    }
}

TEST_F(LineReaderTest, CarriageReturnsAreSkippedWhereverTheyAre) {
    for (const WCHAR* mode : {TEXT("r"), TEXT("rb")}) {
        SCOPED_TRACE(mode[1] ? "binary" : "text");
        EXPECT_EQ((Lines{TEXT("ab"), TEXT("c"), TEXT("d")}), LinesOf("\ra\rb\r\r\nc\r\r\r\nd\r", mode));
    }
}

TEST_F(LineReaderTest, CarriageReturnAloneEndsNoLine) {
    EXPECT_EQ((Lines{TEXT("ab")}), LinesOf("a\rb"));
}

TEST_F(LineReaderTest, NulBytesAreSkippedWhereverTheyAre) {
    EXPECT_EQ((Lines{TEXT("ab"), TEXT("c")}), LinesOf("\0a\0\0b\0\n\0\nc\0"sv));
}

TEST_F(LineReaderTest, LineOfNulBytesAloneIsBlank) {
    EXPECT_EQ(Lines(), LinesOf("\0\0\0\n\0"sv));
}

TEST_F(LineReaderTest, ByteFFSplitsALineInTwo) {
    EXPECT_EQ((Lines{TEXT("a"), TEXT("b")}), LinesOf("a\xFF"
                                                     "b\n"));
}

TEST_F(LineReaderTest, ByteFFDoesNotEndTheFile) {
    EXPECT_EQ((Lines{TEXT("a"), TEXT("b"), TEXT("c")}), LinesOf("\xFF\xFF"
                                                                "a\xFF\xFF\xFF"
                                                                "b\nc\xFF"));
}

TEST_F(LineReaderTest, FileOfFFBytesAloneHasNoLines) {
    EXPECT_EQ(Lines(), LinesOf("\xFF\xFF\xFF"));
}

TEST_F(LineReaderTest, CommentEndsAtAByteFF) {
    EXPECT_EQ((Lines{TEXT("key=1")}), LinesOf("# note\xFF"
                                              "key=1\n"));
}

TEST_F(LineReaderTest, ByteE9BecomesUFFE9) {
    const Lines lines = LinesOf("\xE9");
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(WideString(1, 0xFFE9), lines[0]);
}

TEST_F(LineReaderTest, EveryOtherByteIsOneUnitSignExtended) {
    std::string bytes;
    WideString expected;
    for (int code = 0x01; code <= 0xFE; ++code) {
        const bool hasOtherMeaning = code == '\n' || code == '\r' || code == '#' || code == 0x1A;
        if (hasOtherMeaning) continue;
        bytes += static_cast<char>(code);
        expected += static_cast<WCHAR>(code < 0x80 ? code : 0xFF00 + code);
    }
    EXPECT_EQ((Lines{expected}), LinesOf(bytes));
    EXPECT_EQ((Lines{expected}), LinesOf(bytes, TEXT("rb")));
}

TEST_F(LineReaderTest, Byte1AIsContentInBinaryModeAndTheEndInTextMode) {
    EXPECT_EQ((Lines{WideString{'a', 0x1A, 'b'}, TEXT("c")}), LinesOf("a\x1A"
                                                                      "b\nc",
                                                                      TEXT("rb")));
    EXPECT_EQ((Lines{TEXT("a")}), LinesOf("a\x1A"
                                          "b\nc",
                                          TEXT("r")));
}

TEST_F(LineReaderTest, BlankLinesAreDiscarded) {
    EXPECT_EQ((Lines{TEXT("a"), TEXT("b")}), LinesOf("\n \n\t\n \t \n\r\na\n\n\n  \nb\n\n \t"));
}

TEST_F(LineReaderTest, CommentLinesAreDiscardedIndentedOrNot) {
    EXPECT_EQ((Lines{TEXT("a")}), LinesOf("#\n# one\n #two\n\t # three\na\n#four"));
}

TEST_F(LineReaderTest, FileOfCommentsAloneHasNoLines) {
    EXPECT_EQ(Lines(), LinesOf("# one\n# two\n\n  # three"));
}

TEST_F(LineReaderTest, NumberSignAfterContentBelongsToTheLine) {
    EXPECT_EQ((Lines{TEXT("a # b"), TEXT("=#")}), LinesOf("a # b\n=#\n"));
}

TEST_F(LineReaderTest, LineIsDeliveredUntrimmed) {
    EXPECT_EQ((Lines{TEXT(" \t a \t ")}), LinesOf(" \t a \t \n"));
}

TEST_F(LineReaderTest, OnlySpacesAndTabsMakeALineBlank) {
    EXPECT_EQ((Lines{TEXT("\v"), TEXT("\f# a")}), LinesOf("\v\n\f# a\n"));
}

TEST_F(LineReaderTest, LineOfOneMegabyteIsDeliveredWhole) {
    const std::string bytes(1 << 20, 'x');
    EXPECT_EQ((Lines{WideString(1 << 20, 'x'), TEXT("y")}), LinesOf(bytes + "\ny"));
}

TEST_F(LineReaderTest, OneMegabyteOfBlankLinesAndOfBlanksIsPassedOver) {
    EXPECT_EQ((Lines{TEXT("y")}), LinesOf(std::string(1 << 19, '\n') + std::string(1 << 19, ' ') + "\ny"));
}

TEST_F(LineReaderTest, EarlierTextOfTheStringIsReplaced) {
    const FileHandle file = Open("a\n");
    WideString line = TEXT("earlier and longer");
    EXPECT_TRUE(LineReader(file.Get()).ReadContentLine(line));
    EXPECT_EQ(TEXT("a"), line);
}
