#include "SimulatorTest.h"

namespace {

constexpr WCHAR path[] = u"\\Temp\\file";

class SystemFiles : public SimulatorTest {
protected:
    static HANDLE Create(DWORD share = 0) {
        return CreateFileW(path, GENERIC_WRITE, share, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    }
    static HANDLE OpenForReading(DWORD share = FILE_SHARE_READ) {
        return CreateFileW(path, GENERIC_READ, share, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    static DWORD Write(HANDLE file, const std::string& bytes) {
        DWORD written = 99;
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        return written;
    }
    static std::string ReadFrom(HANDLE file, DWORD size) {
        std::string bytes(size, '?');
        DWORD count = 99;
        if (!ReadFile(file, bytes.data(), size, &count, nullptr)) return "not read";
        return bytes.substr(0, count);
    }
};

}  // namespace

TEST_F(SystemFiles, WhatIsWrittenLiesInTheFile) {
    device.PutFile(path, "an older file");
    const HANDLE file = Create();
    EXPECT_EQ(2u, Write(file, "ab"));
    EXPECT_EQ(1u, Write(file, "c"));
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ("abc", device.TakeFile(path));
}

TEST_F(SystemFiles, FileThatIsOpenedAlwaysIsMadeOrKeptAsItIs) {
    for (const char* content : {"ab", "abab"}) {
        const HANDLE file =
            CreateFileW(path, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        SetFilePointer(file, 0, nullptr, FILE_END);
        Write(file, "ab");
        EXPECT_TRUE(CloseHandle(file));
        EXPECT_EQ(content, device.TakeFile(path));
    }
}

TEST_F(SystemFiles, FileThatIsNotThereCannotBeOpenedAndAFolderNeither) {
    EXPECT_EQ(INVALID_HANDLE_VALUE, OpenForReading());
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, GetLastError());
    device.MakeFolder(path);
    EXPECT_EQ(INVALID_HANDLE_VALUE, Create());
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
}

TEST_F(SystemFiles, FolderOfANewFileMustExist) {
    EXPECT_EQ(INVALID_HANDLE_VALUE, CreateFileW(u"\\None\\file", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, GetLastError());
}

TEST_F(SystemFiles, OpenFileIsSharedOnlyAsBothAllow) {
    device.PutFile(path, "x");
    const HANDLE first = OpenForReading(FILE_SHARE_READ);
    const HANDLE second = OpenForReading(FILE_SHARE_READ);
    EXPECT_NE(INVALID_HANDLE_VALUE, second);
    EXPECT_EQ(INVALID_HANDLE_VALUE, OpenForReading(0)) << "the others read";
    EXPECT_EQ(INVALID_HANDLE_VALUE, Create(FILE_SHARE_READ)) << "the others do not let it be written";
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, GetLastError());
    CloseHandle(first);
    CloseHandle(second);
    EXPECT_EQ("x", device.TakeFile(path));
}

TEST_F(SystemFiles, OpenFileIsNeitherDeletedNorMoved) {
    const HANDLE file = Create();
    EXPECT_FALSE(DeleteFileW(path));
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, GetLastError());
    EXPECT_FALSE(MoveFileW(path, u"\\Temp\\other"));
    CloseHandle(file);
    EXPECT_TRUE(MoveFileW(path, u"\\Temp\\other"));
    EXPECT_TRUE(DeleteFileW(u"\\Temp\\other"));
    EXPECT_FALSE(device.Exists(u"\\Temp\\other"));
}

TEST_F(SystemFiles, MoveNeedsASourceAndAFreeTarget) {
    EXPECT_FALSE(MoveFileW(path, u"\\Temp\\other"));
    EXPECT_EQ(DWORD{ERROR_FILE_NOT_FOUND}, GetLastError());
    device.PutFile(path, "x");
    device.PutFile(u"\\Temp\\other", "y");
    EXPECT_FALSE(MoveFileW(path, u"\\Temp\\other"));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
    EXPECT_EQ("y", device.TakeFile(u"\\Temp\\other"));
}

TEST_F(SystemFiles, ReadOnlyFileIsNeitherWrittenNorDeleted) {
    device.PutFile(path, "x");
    device.SetReadOnly(path, true);
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY}, GetFileAttributesW(path));
    EXPECT_EQ(INVALID_HANDLE_VALUE, Create());
    EXPECT_EQ(nullptr, _wfopen(path, u"wb"));
    EXPECT_FALSE(DeleteFileW(path));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
    device.SetReadOnly(path, false);
    EXPECT_TRUE(DeleteFileW(path));
}

TEST_F(SystemFiles, FullStorageTakesWhatItHasRoomForAndThenFails) {
    const HANDLE file = Create();
    device.SetFreeStorage(3);
    EXPECT_EQ(3u, Write(file, "abcd"));
    EXPECT_EQ(0u, Write(file, "e"));
    EXPECT_EQ(DWORD{ERROR_DISK_FULL}, GetLastError());
    CloseHandle(file);
    EXPECT_EQ("abc", device.TakeFile(path));
}

TEST_F(SystemFiles, FileForReadingIsNotWritten) {
    device.PutFile(path, "x");
    const HANDLE file = OpenForReading();
    EXPECT_EQ(0u, Write(file, "y"));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
    CloseHandle(file);
}

TEST_F(SystemFiles, FileIsReadFromThePlaceThatWasSought) {
    device.PutFile(path, "abcdef");
    const HANDLE file = OpenForReading();
    LONG high = 0;
    EXPECT_EQ(6u, SetFilePointer(file, 0, nullptr, FILE_END));
    EXPECT_EQ("", ReadFrom(file, 9)) << "the end";
    EXPECT_EQ(2u, SetFilePointer(file, 2, &high, FILE_BEGIN));
    EXPECT_EQ("cd", ReadFrom(file, 2));
    EXPECT_EQ(3u, SetFilePointer(file, -1, nullptr, FILE_CURRENT));
    EXPECT_EQ("def", ReadFrom(file, 9));
    EXPECT_EQ(INVALID_SET_FILE_POINTER, SetFilePointer(file, -7, nullptr, FILE_END));
    EXPECT_EQ(DWORD{ERROR_NEGATIVE_SEEK}, GetLastError());
    CloseHandle(file);
    EXPECT_EQ("SetFilePointer(file 1, 2, 0) = 2", device.Calls({"SetFilePointer"})[1]);
    EXPECT_EQ("ReadFile(file 1, 9) = TRUE, 0", device.Calls({"ReadFile"})[0]);
}

TEST_F(SystemFiles, PlacesBeyond4GigabytesHaveTwoHalves) {
    const HANDLE file = Create();
    LONG high = 1;
    EXPECT_EQ(0xFFFFFFFEu, SetFilePointer(file, -2, &high, FILE_BEGIN));
    EXPECT_EQ(1, high);
    high = 0;
    EXPECT_EQ(1u, SetFilePointer(file, 3, &high, FILE_CURRENT));
    EXPECT_EQ(2, high);
    CloseHandle(file);
}

TEST_F(SystemFiles, PlaceWhoseLowHalfLooksLikeAFailureIsNone) {
    const HANDLE file = Create();
    SetLastError(ERROR_GEN_FAILURE);
    LONG high = 1;
    EXPECT_EQ(INVALID_SET_FILE_POINTER, SetFilePointer(file, -1, &high, FILE_BEGIN));
    EXPECT_EQ(1, high);
    EXPECT_EQ(DWORD{NO_ERROR}, GetLastError());
    CloseHandle(file);
}

TEST_F(SystemFiles, FileForWritingIsNotReadAndOneForReadingNotFlushed) {
    const HANDLE writing = Create();
    EXPECT_EQ("not read", ReadFrom(writing, 1));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
    EXPECT_TRUE(FlushFileBuffers(writing));
    CloseHandle(writing);
    const HANDLE reading = OpenForReading();
    EXPECT_FALSE(FlushFileBuffers(reading));
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, GetLastError());
    CloseHandle(reading);
    EXPECT_EQ("FlushFileBuffers(file 1) = TRUE", device.Calls({"FlushFileBuffers"})[0]);
}

TEST_F(SystemFiles, FileThatIsClosedTwiceIsAViolation) {
    const HANDLE file = Create();
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_FALSE(CloseHandle(file));
    EXPECT_EQ(1u, TakeViolations().size());
}

TEST_F(SystemFiles, FileLeftOpenIsAViolation) {
    Create();
    device.EndTest();
    EXPECT_EQ(1u, TakeViolations().size());
    device.BeginTest();
}

TEST_F(SystemFiles, EachCallCanBeMadeToFail) {
    device.PutFile(path, "x");
    for (const char* function : {"CreateFileW", "ReadFile", "WriteFile", "SetFilePointer", "FlushFileBuffers",
                                 "CloseHandle", "DeleteFileW", "MoveFileW"})
        device.FailCall(function, 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(INVALID_HANDLE_VALUE, Create());
    EXPECT_EQ(DWORD{ERROR_GEN_FAILURE}, GetLastError());
    const HANDLE file = Create();
    EXPECT_EQ(0u, Write(file, "y"));
    EXPECT_EQ("not read", ReadFrom(file, 1));
    EXPECT_EQ(INVALID_SET_FILE_POINTER, SetFilePointer(file, 0, nullptr, FILE_BEGIN));
    EXPECT_EQ(DWORD{ERROR_GEN_FAILURE}, GetLastError());
    EXPECT_FALSE(FlushFileBuffers(file));
    EXPECT_FALSE(CloseHandle(file)) << "it is closed all the same";
    EXPECT_FALSE(DeleteFileW(path));
    EXPECT_FALSE(MoveFileW(path, u"\\Temp\\other"));
    EXPECT_TRUE(MoveFileW(path, u"\\Temp\\other"));
}

TEST_F(SystemFiles, FolderIsMadeWhereItsParentIs) {
    EXPECT_TRUE(CreateDirectoryW(u"\\Temp\\new", nullptr));
    EXPECT_EQ(DWORD{FILE_ATTRIBUTE_DIRECTORY}, GetFileAttributesW(u"\\Temp\\new"));
    EXPECT_FALSE(CreateDirectoryW(u"\\temp\\NEW", nullptr));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
    EXPECT_FALSE(CreateDirectoryW(u"\\Temp\\none\\new", nullptr));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, GetLastError());
    device.PutFile(u"\\Temp\\file", "");
    EXPECT_FALSE(CreateDirectoryW(u"\\Temp\\file", nullptr));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
    device.FailCall("CreateDirectoryW", 1, ERROR_DISK_FULL);
    EXPECT_FALSE(CreateDirectoryW(u"\\Temp\\other", nullptr));
    EXPECT_FALSE(device.Exists(u"\\Temp\\other"));
    EXPECT_EQ(R"(CreateDirectoryW("\Temp\new", null) = TRUE)", device.Calls({"CreateDirectoryW"})[0]);
}
