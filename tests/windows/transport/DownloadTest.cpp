/* Whole downloads of good replies: the files, the callback and the record. */
#include "transport/TransferTest.h"

#include <utility>

#include "helpers/LocalFiles.h"

namespace {

class Download : public TransferTest {
protected:
    /* Downloads into `file` without callback and record. */
    int32_t DownloadTo(const std::wstring& file) {
        return library.download(host, urlPath, file.c_str(), nullptr, nullptr);
    }
};

}  // namespace

TEST_F(Download, FilesOfAllSizesArriveWhole) {
    for (const size_t size : {0U, 1U, chunk - 1, chunk, chunk + 1, 2 * chunk, 100'000U, 10U << 20}) {
        SCOPED_TRACE(size);
        server.Answer(Content(size));
        ExpectDownloadOf(Content(size), static_cast<int64_t>(size));
    }
}

TEST_F(Download, FileIsMadeWhereNoneWas) {
    server.Answer(Content(5000));
    EXPECT_EQ(1, TransferTest::Download());
    EXPECT_TRUE(Content(5000) == ContentOf(target));
}

TEST_F(Download, CallbackIsAskedAfterEveryReadTheLastEmptyOneIncluded) {
    for (const auto& [size, reads] :
         {std::pair{0U, 1U}, {1U, 2U}, {chunk, 2U}, {chunk + 1, 3U}, {3 * chunk, 4U}}) {
        SCOPED_TRACE(size);
        server.Answer(Content(size));
        EXPECT_EQ(1, DownloadOverOldFile());
        EXPECT_EQ(reads, callbacks);
    }
}

TEST_F(Download, RecordAtEachCallbackCountsWhatWasWrittenBeforeIt) {
    constexpr int64_t size = 2 * chunk + 100;
    server.Answer(Content(size));
    std::vector<std::pair<int64_t, int64_t>> seen;
    atCallback = [&] {
        seen.emplace_back(progress.bytesReceived, progress.totalBytes);
        return 1;
    };
    EXPECT_EQ(1, DownloadOverOldFile());
    EXPECT_EQ(
        (std::vector<std::pair<int64_t, int64_t>>{{0, size}, {chunk, size}, {2 * chunk, size}, {size, size}}),
        seen);
}

TEST_F(Download, WhileItRunsTheTemporaryFileGrowsAndTheTargetIsGone) {
    server.Answer(Content(5 * chunk));
    atCallback = [&] {
        EXPECT_EQ(std::vector<std::wstring>{L"file.map.TMP"}, folder.Names());
        WIN32_FILE_ATTRIBUTE_DATA data{};
        EXPECT_TRUE(GetFileAttributesExW(temporary.c_str(), GetFileExInfoStandard, &data));
        EXPECT_EQ(progress.bytesReceived, static_cast<int64_t>(data.nFileSizeLow));
        return 1;
    };
    EXPECT_EQ(1, DownloadOverOldFile());
    EXPECT_EQ(6U, callbacks);
}

TEST_F(Download, TemporaryFileIsSharedWithNobodyWhileItRuns) {
    server.Answer("abc");
    atCallback = [&] {
        const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_EQ(INVALID_HANDLE_VALUE, file);
        EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, GetLastError());
        return 1;
    };
    EXPECT_EQ(1, DownloadOverOldFile());
}

TEST_F(Download, CancelledAtAnyCallbackLeavesNeitherFile) {
    for (size_t last = 1; last <= 6; ++last) {
        SCOPED_TRACE(last);
        server.Answer(Content(5 * chunk));
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        EXPECT_EQ(0, DownloadOverOldFile());
        EXPECT_EQ(last, callbacks);
        ExpectNoFiles();
        EXPECT_EQ(static_cast<int64_t>((last - 1) * chunk), progress.bytesReceived);
        EXPECT_EQ(5 * chunk, progress.totalBytes);
    }
}

TEST_F(Download, CancelledFarBeforeTheEndReturnsAllTheSame) {
    server.Answer(Content(10U << 20));
    atCallback = [] { return 0; };
    EXPECT_EQ(0, DownloadOverOldFile());
    EXPECT_EQ(1U, callbacks);
    ExpectNoFiles();
}

TEST_F(Download, AnyAnswerOtherThan0GoesOn) {
    server.Answer(Content(5000));
    for (const int answer : {1, -1, 2, INT_MIN, INT_MAX}) {
        atCallback = [&] { return answer; };
        ExpectDownloadOf(Content(5000), 5000);
    }
}

TEST_F(Download, ContextIsPassedOnUntouched) {
    static void* received;
    const auto keep = [](void* context) -> int {
        received = context;
        return 1;
    };
    server.Answer("abc");
    for (void* const context : {static_cast<void*>(this), static_cast<void*>(nullptr),
                                reinterpret_cast<void*>(uintptr_t{0xFFFFFFFF})}) {
        received = &received;
        EXPECT_EQ(1, library.downloadWithProgress(host, urlPath, target.c_str(), keep, context, nullptr));
        EXPECT_EQ(context, received);
        received = &received;
        EXPECT_EQ(1, library.download(host, urlPath, target.c_str(), keep, context));
        EXPECT_EQ(context, received);
    }
}

TEST_F(Download, NullCallbackAndNullRecordEachWork) {
    server.Answer("abc");
    EXPECT_EQ(1, library.downloadWithProgress(host, urlPath, target.c_str(), nullptr, this, &progress));
    EXPECT_EQ(3, progress.bytesReceived);
    EXPECT_EQ(3, progress.totalBytes);
    EXPECT_EQ(1, library.downloadWithProgress(host, urlPath, target.c_str(), Callback, this, nullptr));
    EXPECT_EQ(2U, callbacks);
    EXPECT_EQ(1, library.downloadWithProgress(host, urlPath, target.c_str(), nullptr, nullptr, nullptr));
    EXPECT_EQ("abc", ContentOf(target));
}

TEST_F(Download, WithoutARecordIsCancelledTheSameWay) {
    PutFile(target, "old");
    server.Answer(Content(5000));
    atCallback = [&] { return callbacks == 2 ? 0 : 1; };
    EXPECT_EQ(0, library.download(host, urlPath, target.c_str(), Callback, this));
    EXPECT_EQ(2U, callbacks);
    ExpectNoFiles();
}

TEST_F(Download, TemporaryFileOfAnEarlierDownloadIsReplaced) {
    PutFile(temporary, std::string(10000, 'x'));
    server.Answer("abc");
    ExpectDownloadOf("abc", 3);
}

TEST_F(Download, PathMayHaveBlanksAndLettersOfAnyScript) {
    const std::wstring file = folder.Path() + L"\\\u039A\u03C1\u03AE\u03C4\u03B7 \u5730\u56F3.map";
    server.Answer("abc");
    EXPECT_EQ(1, DownloadTo(file));
    EXPECT_EQ("abc", ContentOf(file));
}

TEST_F(Download, PathOf250CharactersIsTaken) {
    std::wstring file = folder.Path() + L"\\";
    ASSERT_GT(250U, file.size());
    file.append(250 - file.size(), L'x');
    server.Answer(Content(5000));
    EXPECT_EQ(1, DownloadTo(file));
    EXPECT_TRUE(Content(5000) == ContentOf(file));
    EXPECT_EQ(1U, folder.Names().size());
}

TEST_F(Download, TargetThatIsOpenElsewhereGives1WithTheOldFileUnchanged) {
    PutFile(target, "old");
    const HANDLE elsewhere = CreateFileW(target.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, elsewhere);
    server.Answer("abc");
    EXPECT_EQ(1, TransferTest::Download());
    CloseHandle(elsewhere);
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_EQ("abc", ContentOf(temporary));
    EXPECT_EQ(3, progress.bytesReceived);
}

// Windows refuses to delete a read-only file whoever asks, and so does Wine, also when it runs as root.
TEST_F(Download, ReadOnlyTargetGives1WithTheOldFileUnchangedAndTheTemporaryOneLeft) {
    PutFile(target, "old");
    ASSERT_TRUE(SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY));
    server.Answer("abc");
    EXPECT_EQ(1, TransferTest::Download());
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_EQ("abc", ContentOf(temporary));
    ASSERT_TRUE(SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST_F(Download, CancelledOverAReadOnlyTargetLeavesTheOldFileAlone) {
    PutFile(target, "old");
    ASSERT_TRUE(SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_READONLY));
    server.Answer("abc");
    atCallback = [] { return 0; };
    EXPECT_EQ(0, TransferTest::Download());
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_FALSE(Exists(temporary));
    ASSERT_TRUE(SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST_F(Download, FolderInPlaceOfTheTargetGives1AndLeavesTheTemporaryFile) {
    ASSERT_TRUE(CreateDirectoryW(target.c_str(), nullptr));
    server.Answer("abc");
    EXPECT_EQ(1, TransferTest::Download());
    EXPECT_EQ((std::vector<std::wstring>{L"file.map", L"file.map.TMP"}), folder.Names());
    EXPECT_EQ("abc", ContentOf(temporary));
}

TEST_F(Download, TemporaryFileThatIsOpenElsewhereFailsWithTheOldFileGone) {
    PutFile(temporary, "theirs");
    const HANDLE elsewhere = CreateFileW(temporary.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, elsewhere);
    server.Answer("abc");
    EXPECT_EQ(0, DownloadOverOldFile());
    CloseHandle(elsewhere);
    EXPECT_EQ(std::vector<std::wstring>{L"file.map.TMP"}, folder.Names());
    EXPECT_EQ("theirs", ContentOf(temporary));
    EXPECT_EQ(0U, callbacks);
    EXPECT_EQ(-7, progress.bytesReceived);
    EXPECT_EQ(-7, progress.totalBytes);
}

TEST_F(Download, FolderInPlaceOfTheTemporaryFileFailsWithTheOldFileGone) {
    ASSERT_TRUE(CreateDirectoryW(temporary.c_str(), nullptr));
    server.Answer("abc");
    EXPECT_EQ(0, DownloadOverOldFile());
    EXPECT_EQ(std::vector<std::wstring>{L"file.map.TMP"}, folder.Names());
    EXPECT_EQ(0U, callbacks);
}

TEST_F(Download, FolderThatDoesNotExistFailsAndIsNotMade) {
    server.Answer("abc");
    EXPECT_EQ(0, DownloadTo(folder.Path() + L"\\no such folder\\file.map"));
    ExpectNoFiles();
    EXPECT_EQ(1U, server.TakeRequests().size()) << "asked for before the file is made";
}
