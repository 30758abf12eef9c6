#include <gtest/gtest.h>

#include "Device.h"
#include "base/OwnedFile.h"
#include "support/DeviceTest.h"
#include "text/LineReader.h"

namespace {

class LineReaderErrors : public DeviceTest {
protected:
    static FileHandle Open(std::string_view bytes) {
        const WideString path = PathOf(TEXT("lines.txt"));
        PutFile(path, bytes);
        return FileHandle(_wfopen(path.c_str(), TEXT("r")));
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(LineReaderErrors, StreamWhoseErrorIndicatorIsSetHasNoLines) {
    const FileHandle file = Open("a\nb\n");
    device.FailCall("fread", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(EOF, fgetc(file.Get()));
    EXPECT_TRUE(ferror(file.Get()));
    WideString line = TEXT("before");
    EXPECT_FALSE(LineReader(file.Get()).ReadContentLine(line));
    EXPECT_EQ(WideString(), line);
    EXPECT_EQ(1u, device.CountCalls("fread")) << "it is not even tried";
}

TEST_F(LineReaderErrors, WhatWasReadBeforeAnErrorIsDelivered) {
    // The stream asks for a byte at a time; the fourth is the "c".
    const FileHandle file = Open("a\nbcd\ne\n");
    device.FailCall("fread", 4, ERROR_GEN_FAILURE, Failing::FromThereOn);
    WideString line;
    LineReader reader(file.Get());
    EXPECT_TRUE(reader.ReadContentLine(line));
    EXPECT_EQ(TEXT("a"), line);
    EXPECT_TRUE(reader.ReadContentLine(line));
    EXPECT_EQ(TEXT("b"), line);
    EXPECT_FALSE(reader.ReadContentLine(line));
}

TEST_F(LineReaderErrors, ErrorInACommentEndsTheFile) {
    const FileHandle file = Open("# a\nb\n");
    device.FailCall("fread", 3, ERROR_GEN_FAILURE);
    WideString line;
    EXPECT_FALSE(LineReader(file.Get()).ReadContentLine(line));
}

TEST_F(LineReaderErrors, FolderOpenedAsAFileEndsThoughItNeverReportsItsEnd) {
    const FileHandle folder(fopen("/", "r"));
    ASSERT_TRUE(folder);
    WideString line = TEXT("before");
    EXPECT_FALSE(LineReader(folder.Get()).ReadContentLine(line));
    EXPECT_EQ(WideString(), line);
    EXPECT_FALSE(feof(folder.Get()));
}

TEST_F(LineReaderErrors, StreamWhoseEndIndicatorIsSetHasNoLinesThoughItsFileHasGrown) {
    const FileHandle file = Open("a\n");
    EXPECT_EQ('a', fgetc(file.Get()));
    EXPECT_EQ('\n', fgetc(file.Get()));
    EXPECT_EQ(EOF, fgetc(file.Get()));
    PutFile(PathOf(TEXT("lines.txt")), "a\nb\n");
    WideString line;
    EXPECT_FALSE(LineReader(file.Get()).ReadContentLine(line));
}
