#include "SimulatorTest.h"

using namespace std::string_literals;

namespace {

constexpr const WCHAR* path = u"\\Temp\\file";

class StandardFiles : public SimulatorTest {
protected:
    /* All that fread gives in that mode. */
    std::string ReadAs(const WCHAR* mode, const std::string& bytes) {
        device.PutFile(path, bytes);
        FILE* const file = _wfopen(path, mode);
        std::string read;
        for (int byte = fgetc(file); byte != EOF; byte = fgetc(file))
            read += static_cast<char>(byte);
        EXPECT_TRUE(feof(file));
        EXPECT_FALSE(ferror(file));
        fclose(file);
        return read;
    }

    /* What lies in the file after `bytes` were written in that mode. */
    std::string WrittenAs(const WCHAR* mode, const std::string& bytes) {
        FILE* const file = _wfopen(path, mode);
        EXPECT_EQ(1u, fwrite(bytes.data(), bytes.size(), 1, file));
        EXPECT_EQ(0, fclose(file));
        return device.TakeFile(path).value_or("no file");
    }
};

}  // namespace

TEST_F(StandardFiles, BinaryModeChangesNothing) {
    const std::string bytes = "a\r\nb\nc\x1A\0d\r"s;
    EXPECT_EQ(bytes, ReadAs(u"rb", bytes));
    EXPECT_EQ(bytes, WrittenAs(u"wb", bytes));
}

TEST_F(StandardFiles, TextModeReadsLineEndsAsLineFeedsUpToByte1A) {
    EXPECT_EQ("a\nb\nc\rd", ReadAs(u"r",
                                   "a\r\nb\nc\rd\x1A"
                                   "e\n"));
    EXPECT_EQ("\r\n\r", ReadAs(u"r", "\r\r\n\r"));
    EXPECT_EQ("", ReadAs(u"r", "\x1A"));
    EXPECT_EQ("\xFF\0x"s, ReadAs(u"r", "\xFF\0x"s));
}

TEST_F(StandardFiles, TextModeWritesLineFeedsAsLineEnds) {
    EXPECT_EQ("a\r\nb\r\r\n\x1A\0"s, WrittenAs(u"w", "a\nb\r\n\x1A\0"s));
}

TEST_F(StandardFiles, WritingReplacesWhatWasThere) {
    device.PutFile(path, "a long content");
    EXPECT_EQ("short", WrittenAs(u"wb", "short"));
    fclose(_wfopen(path, u"w"));
    EXPECT_EQ("", device.TakeFile(path));
}

TEST_F(StandardFiles, FileThatCannotBeOpenedIsNull) {
    EXPECT_EQ(nullptr, _wfopen(u"\\Temp\\none", u"rb"));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, GetLastError());
    EXPECT_EQ(nullptr, _wfopen(u"\\None\\file", u"wb"));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, GetLastError());
    EXPECT_EQ(nullptr, _wfopen(u"\\Temp", u"rb"));
    EXPECT_EQ(nullptr, _wfopen(u"\\Temp", u"wb"));
    EXPECT_EQ(nullptr, _wfopen(u"", u"rb"));
    EXPECT_EQ(nullptr, _wfopen(nullptr, u"rb"));
}

TEST_F(StandardFiles, ModesThatAreNotSimulatedAreViolations) {
    for (const char16_t* mode : {u"a", u"r+b", u"", u"rt"})
        EXPECT_EQ(nullptr, _wfopen(path, mode));
    EXPECT_EQ(4u, TakeViolations().size());
}

TEST_F(StandardFiles, ItemThatIsCutByTheEndIsNotRead) {
    device.PutFile(path, "abcdef");
    FILE* const file = _wfopen(path, u"rb");
    char item[4] = {};
    EXPECT_EQ(1u, fread(item, 4, 1, file));
    EXPECT_FALSE(feof(file));
    EXPECT_EQ(0u, fread(item, 4, 1, file));
    EXPECT_TRUE(feof(file));
    EXPECT_FALSE(ferror(file));
    fclose(file);
}

TEST_F(StandardFiles, ReadingToTheLastByteDoesNotMeetTheEnd) {
    device.PutFile(path, "ab");
    FILE* const file = _wfopen(path, u"rb");
    char item[2] = {};
    EXPECT_EQ(1u, fread(item, 2, 1, file));
    EXPECT_FALSE(feof(file));
    EXPECT_EQ(EOF, fgetc(file));
    EXPECT_TRUE(feof(file));
    fclose(file);
}

TEST_F(StandardFiles, SeekingMovesReadsAndWrites) {
    device.PutFile(path, "abcdef");
    FILE* file = _wfopen(path, u"rb");
    fgetc(file);
    EXPECT_EQ(0, fseek(file, 0, SEEK_SET));
    EXPECT_EQ('a', fgetc(file));
    EXPECT_EQ(0, fseek(file, 2, SEEK_CUR));
    EXPECT_EQ('d', fgetc(file));
    EXPECT_EQ(0, fseek(file, -1, SEEK_END));
    EXPECT_EQ('f', fgetc(file));
    EXPECT_NE(0, fseek(file, -1, SEEK_SET));
    EXPECT_EQ(6, ftell(file));
    fclose(file);
    file = _wfopen(path, u"wb");
    fwrite("abcdef", 6, 1, file);
    EXPECT_EQ(0, fseek(file, 1, SEEK_SET));
    fputc('X', file);
    fclose(file);
    EXPECT_EQ("aXcdef", device.TakeFile(path));
}

TEST_F(StandardFiles, ReadInWriteModeAndWriteInReadModeFail) {
    FILE* file = _wfopen(path, u"wb");
    EXPECT_EQ(EOF, fgetc(file));
    EXPECT_TRUE(ferror(file));
    fclose(file);
    file = _wfopen(path, u"rb");
    EXPECT_EQ(EOF, fputc('x', file));
    EXPECT_TRUE(ferror(file));
    fclose(file);
}

TEST_F(StandardFiles, OrderedReadFailureSetsTheErrorAndNotTheEnd) {
    device.PutFile(path, "abcdef");
    device.FailCall("fread", 3, ERROR_READ_FAULT);
    FILE* const file = _wfopen(path, u"rb");
    char item[2] = {};
    EXPECT_EQ(1u, fread(item, 2, 1, file));
    EXPECT_EQ(0u, fread(item, 2, 1, file));
    EXPECT_TRUE(ferror(file));
    EXPECT_FALSE(feof(file));
    EXPECT_EQ(DWORD{ERROR_READ_FAULT}, GetLastError());
    fclose(file);
}

TEST_F(StandardFiles, WritesReachTheStorageWhenTheBufferIsFull) {
    FILE* const file = _wfopen(path, u"wb");
    EXPECT_EQ(1u, fwrite(std::string(4095, 'a').data(), 4095, 1, file));
    EXPECT_EQ("", device.TakeFile(path));
    EXPECT_EQ(1u, fwrite("ab", 2, 1, file));
    EXPECT_EQ(std::string(4096, 'a'), device.TakeFile(path));
    EXPECT_EQ(1u, device.CountCalls("fwrite"));
    EXPECT_EQ(0, fclose(file));
    EXPECT_EQ(std::string(4096, 'a') + "b", device.TakeFile(path));
    EXPECT_EQ(2u, device.CountCalls("fwrite"));
}

TEST_F(StandardFiles, FlushAndSeekWriteWhatWasCollected) {
    FILE* const file = _wfopen(path, u"wb");
    EXPECT_EQ('a', fputc('a', file));
    EXPECT_EQ("", device.TakeFile(path));
    EXPECT_EQ(0, fflush(file));
    EXPECT_EQ("a", device.TakeFile(path));
    EXPECT_EQ('b', fputc('b', file));
    EXPECT_EQ(0, fseek(file, 0, SEEK_SET));
    EXPECT_EQ("ab", device.TakeFile(path));
    EXPECT_EQ(0, fflush(file));
    EXPECT_EQ(2u, device.CountCalls("fwrite")) << "there was nothing to flush";
    EXPECT_EQ(0, fclose(file));
}

TEST_F(StandardFiles, OrderedWriteFailureShowsWhereTheBytesAreWritten) {
    device.FailCall("fwrite", 2, ERROR_WRITE_FAULT);
    FILE* const file = _wfopen(path, u"wb");
    EXPECT_EQ(1u, fwrite("ab", 2, 1, file));
    EXPECT_EQ(0, fflush(file));
    EXPECT_EQ(1u, fwrite("cd", 2, 1, file));
    EXPECT_FALSE(ferror(file));
    EXPECT_EQ(EOF, fflush(file));
    EXPECT_TRUE(ferror(file));
    EXPECT_EQ(DWORD{ERROR_WRITE_FAULT}, GetLastError());
    EXPECT_EQ(1u, fwrite("ef", 2, 1, file));
    EXPECT_EQ(0, fclose(file));
    EXPECT_EQ("abef", device.TakeFile(path)) << "what was lost is not tried again";
    EXPECT_EQ(3u, device.CountCalls("fwrite"));
}

TEST_F(StandardFiles, WriteThatFailsAtTheCloseFailsIt) {
    device.FailCall("fwrite", 1, ERROR_WRITE_FAULT);
    FILE* const file = _wfopen(path, u"wb");
    EXPECT_EQ(1u, fwrite("ab", 2, 1, file));
    EXPECT_EQ(EOF, fclose(file));
    EXPECT_EQ(Lines{"fclose(file 1) = -1"}, device.Calls({"fclose"}));
    EXPECT_EQ("", device.TakeFile(path));
}

TEST_F(StandardFiles, OrderedSeekAndCloseFailuresAreReported) {
    device.PutFile(path, "abc");
    device.FailCall("fseek", 1, ERROR_SEEK);
    device.FailCall("fclose", 1, ERROR_WRITE_FAULT);
    FILE* const file = _wfopen(path, u"rb");
    EXPECT_NE(0, fseek(file, 1, SEEK_SET));
    EXPECT_EQ(EOF, fclose(file));
    EXPECT_EQ(DWORD{ERROR_WRITE_FAULT}, GetLastError());
    EXPECT_EQ(Lines{"fclose(file 1) = -1"}, device.Calls({"fclose"}));
}

TEST_F(StandardFiles, FullStorageCutsTheWriteThatMeetsTheLimit) {
    device.SetFreeStorage(5000);
    FILE* const file = _wfopen(path, u"wb");
    const std::string bytes(8192, 'a');
    EXPECT_EQ(1u, fwrite(bytes.data(), 4096, 1, file));
    EXPECT_EQ(1u, fwrite(bytes.data(), 4096, 1, file));
    EXPECT_FALSE(ferror(file));
    EXPECT_EQ(0u, fwrite(bytes.data(), 8192, 1, file));
    EXPECT_TRUE(ferror(file));
    fclose(file);
    EXPECT_EQ(std::string(5000, 'a'), device.TakeFile(path));
}

TEST_F(StandardFiles, FullStorageShowsAtTheCloseOfAFileThatFitsTheBuffer) {
    device.SetFreeStorage(2);
    FILE* const file = _wfopen(path, u"w");
    EXPECT_EQ(1u, fwrite("a\n", 2, 1, file));
    EXPECT_FALSE(ferror(file));
    EXPECT_EQ(EOF, fclose(file));
    EXPECT_EQ("a\r", device.TakeFile(path));
}

TEST_F(StandardFiles, OpeningAndClosingAreInTheJournalReadsAreCounted) {
    device.PutFile(path, "ab");
    FILE* const file = _wfopen(path, u"rb");
    fgetc(file);
    fgetc(file);
    fgetc(file);
    fclose(file);
    EXPECT_EQ((Lines{R"(_wfopen("\Temp\file", "rb") = file 1)", "fclose(file 1) = 0"}), device.Calls());
    EXPECT_EQ(3u, device.CountCalls("fread")) << "two bytes and the end";
}
