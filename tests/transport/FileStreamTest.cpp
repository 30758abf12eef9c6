#include <gtest/gtest.h>

#include "support/DeviceTest.h"
#include "transport/FileReadStream.h"
#include "transport/FileWriteStream.h"

using namespace std::string_view_literals;

namespace {

class FileStream : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        path = PathOf(TEXT("stream.bin"));
    }

    WideString path;
};

}  // namespace

TEST_F(FileStream, WhatIsWrittenLiesInTheFileByteForByte) {
    {
        FileWriteStream stream(path);
        EXPECT_TRUE(stream.good);
        EXPECT_EQ(ByteStream::writing, stream.mode);
        stream.WriteInt32(10);
        stream.WriteString(TEXT("\n\r"));
        stream.WriteBytes("\0\x1A", 2);
        EXPECT_TRUE(stream.good);
        EXPECT_EQ(14u, stream.byteCount);
    }
    EXPECT_EQ("\x0A\0\0\0\2\0\0\0\x0A\0\x0D\0\0\x1A"sv, TakeFile(path).value_or("no file"));
}

TEST_F(FileStream, WritingReplacesAnEarlierFile) {
    PutFile(path, "a longer text than the new one");
    { FileWriteStream(path).WriteBytes("x", 1); }
    EXPECT_EQ("x", TakeFile(path).value_or("no file"));
}

TEST_F(FileStream, ReadingBeginsGoodAndReading) {
    PutFile(path, "abcd");
    const FileReadStream stream(path);
    EXPECT_TRUE(stream.good);
    EXPECT_EQ(ByteStream::reading, stream.mode);
}

TEST_F(FileStream, ReadingDeliversWhatWasWritten) {
    {
        FileWriteStream stream(path);
        stream.WriteInt32(-2);
        stream.WriteString(TEXT("\x00E9t\x00E9"));
    }
    FileReadStream stream(path);
    int32_t value = 0;
    WideString text;
    stream.ReadInt32(value);
    EXPECT_TRUE(stream.ReadString(text));
    EXPECT_EQ(-2, value);
    EXPECT_EQ(TEXT("\x00E9t\x00E9"), text);
    EXPECT_TRUE(stream.good);
    EXPECT_EQ(14u, stream.byteCount);
}

TEST_F(FileStream, NarrowStringsPassThroughFiles) {
    {
        FileWriteStream stream(path);
        stream.wideStrings = false;
        stream.WriteString(TEXT("caf\x00E9"));
    }
    EXPECT_EQ("\4\0\0\0caf\xE9"sv, TakeFile(path).value_or("no file"));
    FileReadStream stream(path);
    stream.wideStrings = false;
    WideString text;
    EXPECT_TRUE(stream.ReadString(text));
    EXPECT_EQ(TEXT("caf\xFFE9"), text);
}

TEST_F(FileStream, ReadOfMoreThanIsLeftFailsUnlikeThatOfAReply) {
    PutFile(path, "ab");
    FileReadStream stream(path);
    int32_t value = 0;
    stream.ReadInt32(value);
    EXPECT_FALSE(stream.good);
}

TEST_F(FileStream, NothingIsReadOnceGoodIsCleared) {
    PutFile(path, "abcdef");
    FileReadStream stream(path);
    stream.good = false;
    char one = 'x';
    EXPECT_FALSE(stream.Read(&one, 1));
    EXPECT_EQ('x', one);
}

TEST_F(FileStream, FileThatCannotBeOpenedFailsEveryOperation) {
    const WideString nowhere = PathOf(TEXT("no such folder\\stream.bin"));
    FileReadStream input(nowhere);
    EXPECT_FALSE(input.good);
    char received = 'x';
    EXPECT_FALSE(input.Read(&received, 1));
    EXPECT_EQ('x', received);
    WideString text;
    EXPECT_FALSE(input.ReadString(text));

    FileWriteStream output(nowhere);
    EXPECT_FALSE(output.good);
    output.WriteInt32(1);
    EXPECT_FALSE(output.good);
    EXPECT_FALSE(TakeFile(nowhere).has_value());
}

TEST_F(FileStream, FolderInPlaceOfAFileHasNothingToRead) {
    MakeFolder(path);
    FileReadStream stream(path);
    char received = 0;
    EXPECT_FALSE(stream.Read(&received, 1));
    EXPECT_FALSE(stream.good);
}

TEST_F(FileStream, EmptyFileHasNothingToRead) {
    PutFile(path, "");
    FileReadStream stream(path);
    EXPECT_TRUE(stream.good);
    int32_t value = 5;
    stream.ReadInt32(value);
    EXPECT_FALSE(stream.good);
    EXPECT_EQ(5, value);
}

TEST_F(FileStream, WritingOnAReadStreamClearsGoodAndLeavesTheFile) {
    PutFile(path, "abcd");
    {
        FileReadStream stream(path);
        stream.WriteInt32(1);
        EXPECT_FALSE(stream.good);
    }
    EXPECT_EQ("abcd", TakeFile(path).value_or("no file"));
}

TEST_F(FileStream, ReadingOnAWriteStreamClearsGood) {
    FileWriteStream stream(path);
    char received = 'x';
    EXPECT_FALSE(stream.Read(&received, 1));
    EXPECT_FALSE(stream.good);
    EXPECT_EQ('x', received);
}

TEST_F(FileStream, NothingIsWrittenOnceGoodIsCleared) {
    {
        FileWriteStream stream(path);
        stream.WriteBytes("kept", 4);
        char received = 0;
        EXPECT_FALSE(stream.Read(&received, 1));
        stream.WriteBytes("lost", 4);
        EXPECT_EQ(8u, stream.byteCount) << "the count goes on";
    }
    EXPECT_EQ("kept", TakeFile(path).value_or("no file"));
}

TEST_F(FileStream, WriteOfNoBytesClearsGood) {
    FileWriteStream stream(path);
    stream.Write("", 0);
    EXPECT_FALSE(stream.good);
}

TEST_F(FileStream, ReadOfNoBytesClearsGood) {
    PutFile(path, "abcd");
    FileReadStream stream(path);
    char received = 0;
    stream.ReadBytes(&received, 0);
    EXPECT_FALSE(stream.good);
}
