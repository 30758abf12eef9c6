/* Downloads and ranged reads through the exports, against scripted hosts. */
#include <gtest/gtest.h>

#include <functional>

#include "Device.h"
#include "LMOnline.h"
#include "support/DeviceTest.h"
#include "transport/NetworkConnection.h"

using namespace std::string_literals;

namespace {

constexpr WCHAR host[] = TEXT("maps.example");
constexpr WCHAR target[] = TEXT("\\Storage\\file.map");
constexpr WCHAR temporary[] = TEXT("\\Storage\\file.map.TMP");

std::string Content(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 4096);
    return bytes;
}

class Transfer : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        managedConnection = nullptr;
    }
    void TearDown() override {
        managedConnection = nullptr;
        DeviceTest::TearDown();
    }

    void Answer(WebReply reply) { device.AddHost(host, 80, std::move(reply)); }
    void Answer(std::string bytes) { Answer(WebReply::WithBody(std::move(bytes))); }

    /* Called at every callback; its answer is the callback's. */
    std::function<int32_t()> atCallback = [] { return 1; };
    size_t callbacks = 0;

    static int LM_CALL Callback(void* context) {
        auto* const test = static_cast<Transfer*>(context);
        ++test->callbacks;
        return test->atCallback();
    }

    int32_t Fetch() {
        return LMDownloadWebFileProgress(host, TEXT("/maps/file.map"), target, Callback, this, &progress);
    }

    void ExpectNeitherFile() {
        EXPECT_FALSE(device.Exists(target));
        EXPECT_FALSE(device.Exists(temporary));
    }

    Device& device = Device::Current();
    DownloadProgress progress = {-7, -7};
};

using Download = Transfer;
using Range = Transfer;

}  // namespace

TEST_F(Download, CallsOfOneDownloadFromConnectionToTheFileInItsPlace) {
    Answer("abc");
    EXPECT_EQ(1, x77fc64c7(host, TEXT("/maps/file.map"), target, nullptr, nullptr));
    const std::vector<std::string> expected = {
        R"(ConnMgrMapURL("http://www.orvande.example/", 0) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000) = "
        "0x00000000, link 1, status 0x10",
        R"(InternetConnectW(earlier session 1, "maps.example", 80, null, null, 3, 0x00000000, 0) = connection 1)",
        R"(HttpOpenRequestW(connection 1, "GET", "/maps/file.map", null, null, null, 0x84280900, 0) = request 1)",
        "HttpSendRequestW(request 1, null, 0, null, 0) = TRUE",
        "HttpQueryInfoW(request 1, 0x20000013) = TRUE, 200",
        R"(DeleteFileW("\Storage\file.map") = FALSE, error 2)",
        R"(CreateFileW("\Storage\file.map.TMP", 0x40000000, 0, null, 2, 0x00000080, null) = file 1)",
        "InternetReadFile(request 1, 4096) = TRUE, 3",
        "WriteFile(file 1, 3) = TRUE, 3",
        "InternetReadFile(request 1, 4096) = TRUE, 0",
        "CloseHandle(file 1) = TRUE",
        "InternetCloseHandle(request 1) = TRUE",
        R"(MoveFileW("\Storage\file.map.TMP", "\Storage\file.map") = TRUE)",
        "InternetCloseHandle(connection 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls());
    EXPECT_EQ("abc", device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, FilesOfAllSizesArriveWhole) {
    for (const size_t size : {0u, 1u, 4095u, 4096u, 4097u, 8192u, 100'000u, 10'000'000u}) {
        SCOPED_TRACE(size);
        Answer(Content(size));
        EXPECT_EQ(1, Fetch());
        EXPECT_TRUE(Content(size) == device.TakeFile(target).value_or("no file"));
        EXPECT_FALSE(device.Exists(temporary));
        EXPECT_EQ(static_cast<int64_t>(size), progress.bytesReceived);
        EXPECT_EQ(static_cast<int64_t>(size), progress.totalBytes);
    }
}

TEST_F(Download, ReplacesTheOldFile) {
    device.PutFile(target, "an older and longer file");
    Answer("new");
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ("new", device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, CallbackIsAskedAfterEveryReadTheLastEmptyOneIncluded) {
    Answer(Content(3 * 4096));
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ(4u, callbacks);
    EXPECT_EQ(4u, device.CountCalls("InternetReadFile"));
}

TEST_F(Download, CallbackIsAskedBeforeTheBytesOfItsReadAreWritten) {
    Answer(Content(2 * 4096));
    std::vector<std::pair<int64_t, size_t>> seen;
    atCallback = [&] {
        seen.emplace_back(progress.bytesReceived, device.CountCalls("WriteFile"));
        return 1;
    };
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ((std::vector<std::pair<int64_t, size_t>>{{0, 0}, {4096, 1}, {8192, 2}}), seen);
}

TEST_F(Download, WhileItRunsTheTemporaryFileIsThereAndTheTargetGone) {
    device.PutFile(target, "old");
    Answer(Content(5000));
    atCallback = [&] {
        EXPECT_TRUE(device.Exists(temporary));
        EXPECT_FALSE(device.Exists(target));
        return 1;
    };
    EXPECT_EQ(1, Fetch());
}

TEST_F(Download, RecordStartsAt0AndHoldsTheLengthAtTheFirstCallback) {
    Answer(Content(5000));
    std::vector<int64_t> totals;
    atCallback = [&] {
        totals.push_back(progress.totalBytes);
        return 1;
    };
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ((std::vector<int64_t>{5000, 5000, 5000}), totals);
}

TEST_F(Download, ReplyWithoutALengthCountsUpAllTheSame) {
    WebReply reply = WebReply::WithBody(Content(5000));
    reply.sendsContentLength = false;
    Answer(reply);
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ(-1, progress.totalBytes);
    EXPECT_EQ(5000, progress.bytesReceived);
}

TEST_F(Download, ReplyThatEndsIsCompleteWhateverItsLengthSaid) {
    for (const WCHAR* length : {TEXT("3"), TEXT("100000"), TEXT("no number")}) {
        WebReply reply = WebReply::WithBody(Content(5000));
        reply.headers = {{u"Content-Length", length}};
        Answer(reply);
        EXPECT_EQ(1, Fetch());
        EXPECT_TRUE(Content(5000) == device.TakeFile(target).value_or("no file"));
        EXPECT_EQ(5000, progress.bytesReceived);
    }
}

TEST_F(Download, ReplyCutByAnEndIsComplete) {
    WebReply reply = WebReply::WithBody(Content(5000));
    reply.breaks = WebReply::Break::Close;
    reply.breakAt = 4500;
    Answer(reply);
    EXPECT_EQ(1, Fetch());
    EXPECT_TRUE(Content(4500) == device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, ReplyCutByAResetLeavesNeitherFile) {
    for (const uint64_t at : {0u, 1u, 4095u, 4096u, 4097u, 9999u}) {
        SCOPED_TRACE(at);
        device.PutFile(target, "old");
        WebReply reply = WebReply::WithBody(Content(10000));
        reply.breaks = WebReply::Break::Reset;
        reply.breakAt = at;
        Answer(reply);
        EXPECT_EQ(0, Fetch());
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>(at / 4096 * 4096), progress.bytesReceived);
    }
}

TEST_F(Download, NetworkReadThatFailsIsNotReportedToTheCallback) {
    Answer(Content(5000));
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    EXPECT_EQ(0, Fetch());
    EXPECT_EQ(1u, callbacks);
    ExpectNeitherFile();
}

TEST_F(Download, RefusedReplyLeavesTheOldFileUntouched) {
    for (const DWORD status : {300u, 302u, 404u, 500u, 999u, 0u}) {
        SCOPED_TRACE(status);
        device.PutFile(target, "old");
        Answer(status == 0 ? WebReply::Nothing() : WebReply::WithStatus(status));
        if (status == 0) device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
        EXPECT_FALSE(device.Exists(temporary));
        EXPECT_EQ(-7, progress.bytesReceived) << "the record is not touched";
    }
    EXPECT_EQ(0u, callbacks);
}

TEST_F(Download, StatusOf299IsTaken) {
    WebReply reply = WebReply::WithBody("abc");
    reply.status = 299;
    Answer(reply);
    EXPECT_EQ(1, Fetch());
}

TEST_F(Download, StatusThatCannotBeAskedCountsAsARefusal) {
    device.PutFile(target, "old");
    Answer("abc");
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(0, Fetch());
    EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, FailureBeforeAReplyLeavesTheOldFileUntouched) {
    device.PutFile(target, "old");
    EXPECT_EQ(0, Fetch()) << "unknown host";
    Answer(WebReply::Refused());
    EXPECT_EQ(0, Fetch());
    for (const char* function : {"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        Answer("abc");
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        EXPECT_EQ(0, Fetch()) << function;
    }
    EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
    EXPECT_EQ(0u, device.CountCalls("DeleteFileW"));
}

TEST_F(Download, CancelledAtAnyCallbackLeavesNeitherFile) {
    for (size_t last = 1; last <= 6; ++last) {
        SCOPED_TRACE(last);
        device.PutFile(target, "old");
        Answer(Content(5 * 4096));
        callbacks = 0;
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ(last, callbacks);
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>((last - 1) * 4096), progress.bytesReceived);
    }
}

TEST_F(Download, CallbackThatThrowsIsStoppedAtTheExport) {
    Answer(Content(5000));
    atCallback = []() -> int32_t { throw 5; };
    EXPECT_EQ(0, Fetch());
    ExpectNeitherFile();
}

TEST_F(Download, FullStorageLeavesNeitherFile) {
    for (const uint64_t room : {0u, 1u, 4095u, 4096u, 9999u}) {
        SCOPED_TRACE(room);
        device.PutFile(target, "old");
        Answer(Content(10000));
        device.SetFreeStorage(room);
        EXPECT_EQ(0, Fetch());
        device.SetFreeStorage(std::nullopt);
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>(room / 4096 * 4096), progress.bytesReceived);
    }
}

TEST_F(Download, TemporaryFileThatCannotBeMadeFailsWithTheOldFileGone) {
    device.PutFile(target, "old");
    Answer("abc");
    device.FailCall("CreateFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(0, Fetch());
    ExpectNeitherFile();
    EXPECT_EQ(0u, callbacks);
    EXPECT_EQ(-7, progress.totalBytes);
}

TEST_F(Download, FolderThatDoesNotExistFails) {
    Answer("abc");
    EXPECT_EQ(0, x77fc64c7(host, TEXT("/f"), TEXT("\\No Such Folder\\file.map"), nullptr, nullptr));
}

TEST_F(Download, MoveThatFailsIsStillASuccess) {
    Answer("abc");
    device.FailCall("MoveFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(1, Fetch());
    EXPECT_FALSE(device.Exists(target));
    EXPECT_EQ("abc", device.TakeFile(temporary).value_or("no file"));
}

TEST_F(Download, ReadOnlyTargetGives1WithTheOldFileUnchangedAndTheTemporaryOneLeft) {
    device.PutFile(target, "old");
    device.SetReadOnly(target, true);
    Answer("abc");
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
    EXPECT_EQ("abc", device.TakeFile(temporary).value_or("no file"));
}

TEST_F(Download, TargetThatIsOpenElsewhereGives1WithTheOldFileUnchanged) {
    device.PutFile(target, "old");
    const HANDLE elsewhere = CreateFileW(target, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                         FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, elsewhere);
    Answer("abc");
    EXPECT_EQ(1, Fetch());
    CloseHandle(elsewhere);
    EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
    EXPECT_EQ("abc", device.TakeFile(temporary).value_or("no file"));
}

TEST_F(Download, TemporaryFileOfAnEarlierDownloadIsReplaced) {
    device.PutFile(temporary, std::string(10000, 'x'));
    Answer("abc");
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ("abc", device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, PathOf250CharactersIsTaken) {
    const WideString path = TEXT("\\Storage\\") + WideString(241, TEXT('x'));
    Answer("abc");
    EXPECT_EQ(1, x77fc64c7(host, TEXT("/f"), path.c_str(), nullptr, nullptr));
    EXPECT_EQ("abc", device.TakeFile(path).value_or("no file"));
}

TEST_F(Download, NullCallbackAndNullRecordEachWork) {
    Answer("abc");
    EXPECT_EQ(1, LMDownloadWebFileProgress(host, TEXT("/f"), target, nullptr, nullptr, &progress));
    EXPECT_EQ(3, progress.bytesReceived);
    EXPECT_EQ(1, LMDownloadWebFileProgress(host, TEXT("/f"), target, Callback, this, nullptr));
    EXPECT_EQ(2u, callbacks);
    EXPECT_EQ(1, LMDownloadWebFileProgress(host, TEXT("/f"), target, nullptr, nullptr, nullptr));
}

TEST_F(Download, WithoutARecordTheLengthIsNotAsked) {
    Answer("abc");
    EXPECT_EQ(1, x77fc64c7(host, TEXT("/f"), target, Callback, this));
    EXPECT_EQ(1u, device.CountCalls("HttpQueryInfoW"));
    EXPECT_EQ(2u, callbacks);
}

TEST_F(Download, BadArgumentsGive0AndTouchNothing) {
    device.PutFile(target, "old");
    Answer("abc");
    EXPECT_EQ(0, LMDownloadWebFileProgress(nullptr, TEXT("/f"), target, Callback, this, &progress));
    EXPECT_EQ(0, LMDownloadWebFileProgress(host, nullptr, target, Callback, this, &progress));
    EXPECT_EQ(0, LMDownloadWebFileProgress(host, TEXT("/f"), nullptr, Callback, this, &progress));
    EXPECT_EQ(0, x77fc64c7(nullptr, TEXT("/f"), target, nullptr, nullptr));
    EXPECT_EQ(0, x77fc64c7(host, nullptr, target, nullptr, nullptr));
    EXPECT_EQ(0, x77fc64c7(host, TEXT("/f"), nullptr, nullptr, nullptr));
    EXPECT_EQ("old", device.TakeFile(target).value_or("no file"));
    EXPECT_TRUE(device.Calls().empty());
    EXPECT_EQ(0u, callbacks);
    EXPECT_EQ(-7, progress.bytesReceived);
}

TEST_F(Download, RoamingIsNotAskedAbout) {
    SetRegistryValue(HKEY_LOCAL_MACHINE, TEXT("System\\State\\Phone"), TEXT("Status"), REG_DWORD,
                     "\0\2\0\0"s);
    Answer("abc");
    EXPECT_EQ(1, Fetch());
    EXPECT_TRUE(device.MessageBoxes().empty());
}

TEST_F(Download, DataConnectionStaysUp) {
    Answer("abc");
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
    EXPECT_NE(nullptr, managedConnection);
}

TEST_F(Download, WhereverMemoryRunsOutTheFilesAreWhole) {
    for (size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        device.PutFile(target, "old");
        Answer("abc");
        AllocationWatch watch(n, Failing::FromThereOn);
        const int32_t result = x77fc64c7(host, TEXT("/maps/file.map"), target, nullptr, nullptr);
        watch.Stop();
        EXPECT_FALSE(device.Exists(temporary));
        EXPECT_EQ(result == 1 ? "abc" : "old", device.TakeFile(target).value_or("no file"));
        if (!watch.Failed()) break;
        ASSERT_LT(n, 100u);
    }
}

TEST_F(Range, FirstByteAsksForBytes0To0WithALineFeed) {
    Answer("abc");
    char buffer[1];
    EXPECT_EQ(1, xfa704a3f(host, TEXT("/f"), 0, 1, buffer, nullptr, nullptr));
    ASSERT_EQ(1u, device.Requests().size());
    const WebRequest& sent = device.Requests()[0];
    EXPECT_EQ(u"Range:bytes=0-0\n", sent.headers);
    EXPECT_EQ(0x04280100u, sent.flags);
    EXPECT_EQ(u"GET", sent.verb);
    EXPECT_EQ("", sent.body);
    EXPECT_EQ('a', buffer[0]);
}

TEST_F(Range, HeaderOfOffsetsAndLengths) {
    const struct {
        int64_t offset;
        int32_t length;
        const WCHAR* header;
    } cases[] = {
        {100, 10, TEXT("Range:bytes=100-109\n")},
        {0x100000000, 0x7FFFFFFF, TEXT("Range:bytes=4294967296-6442450942\n")},
        {5, 0, TEXT("Range:bytes=5-4\n")},
        {5, -3, TEXT("Range:bytes=5-1\n")},
        {0, INT32_MIN, TEXT("Range:bytes=0--2147483649\n")},
        {-1, 1, TEXT("Range:bytes=-1--1\n")},
        {INT64_MAX, 2, TEXT("Range:bytes=9223372036854775807--9223372036854775808\n")},
    };
    Answer("");
    char buffer[1];
    for (const auto& c : cases) {
        xfa704a3f(host, TEXT("/f"), c.offset, c.length, buffer, nullptr, nullptr);
        EXPECT_EQ(c.header, device.Requests().back().headers);
    }
}

TEST_F(Range, CallsOfOneRangedRead) {
    WebReply reply = WebReply::WithBody("cdef");
    reply.status = 206;
    Answer(reply);
    char buffer[4];
    EXPECT_EQ(4, xfa704a3f(host, TEXT("/f"), 2, 4, buffer, Callback, this));
    const std::vector<std::string> expected = {
        R"(InternetConnectW(earlier session 1, "maps.example", 80, null, null, 3, 0x00000000, 0) = connection 1)",
        R"(HttpOpenRequestW(connection 1, null, "/f", null, null, null, 0x04280100, 0) = request 1)",
        R"(HttpSendRequestW(request 1, "Range:bytes=2-5<U+000A>", 16, null, 0) = TRUE)",
        "HttpQueryInfoW(request 1, 0x20000013) = TRUE, 206",
        "InternetReadFile(request 1, 4) = TRUE, 4",
        "InternetCloseHandle(request 1) = TRUE",
        "InternetCloseHandle(connection 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls({"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW",
                                      "HttpQueryInfoW", "InternetReadFile", "InternetCloseHandle"}));
    EXPECT_EQ("cdef", std::string(buffer, 4));
    EXPECT_EQ(1u, callbacks);
}

TEST_F(Range, LongOneIsReadInPiecesOf4096AndTheRest) {
    Answer(Content(20000));
    std::string buffer(10000, '\0');
    EXPECT_EQ(10000, xfa704a3f(host, TEXT("/f"), 0, 10000, buffer.data(), Callback, this));
    EXPECT_TRUE(Content(10000) == buffer) << "a server without ranges gives the file's first bytes";
    EXPECT_EQ((std::vector<std::string>{"InternetReadFile(request 1, 4096) = TRUE, 4096 (2 times)",
                                        "InternetReadFile(request 1, 1808) = TRUE, 1808"}),
              device.Calls({"InternetReadFile"}));
    EXPECT_EQ(3u, callbacks);
}

TEST_F(Range, SmallChunksFillTheBuffer) {
    WebReply reply = WebReply::WithBody(Content(5000));
    reply.chunks = {1, 4095, 7};
    Answer(reply);
    std::string buffer(5000, '\0');
    EXPECT_EQ(5000, xfa704a3f(host, TEXT("/f"), 0, 5000, buffer.data(), nullptr, nullptr));
    EXPECT_TRUE(Content(5000) == buffer);
}

TEST_F(Range, ReplyShorterThanTheLengthGives0AndKeepsWhatCame) {
    Answer("abc");
    char buffer[6] = ".....";
    EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, 5, buffer, Callback, this));
    EXPECT_EQ("abc.."s, buffer);
    EXPECT_EQ(1u, callbacks) << "an empty read is not reported";
}

TEST_F(Range, LengthOf0OrBelowGives0WithoutARead) {
    Answer("abc");
    char buffer[1] = {'x'};
    for (const int32_t length : {0, -1, INT32_MIN})
        EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, length, buffer, Callback, this));
    EXPECT_EQ(3u, device.Requests().size()) << "the request is sent";
    EXPECT_EQ(0u, device.CountCalls("InternetReadFile"));
    EXPECT_EQ('x', buffer[0]);
}

TEST_F(Range, LengthOf0OnARefusalGivesMinus1) {
    Answer(WebReply::WithStatus(404));
    char buffer[1];
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 0, buffer, nullptr, nullptr));
}

TEST_F(Range, RefusalsGiveMinus1) {
    char buffer[4];
    for (const DWORD status : {300u, 301u, 404u, 416u, 500u}) {
        Answer(WebReply::WithStatus(status));
        EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    }
    Answer("abcd");
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
}

TEST_F(Range, FailuresBeforeTheReplyGiveMinus1) {
    char buffer[4];
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr)) << "unknown host";
    for (const char* function : {"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        Answer("abcd");
        device.FailCall(function, 1, ERROR_INTERNET_INTERNAL_ERROR);
        EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr)) << function;
    }
}

TEST_F(Range, ReadThatFailsGives0WithoutAskingTheCallback) {
    Answer(Content(5000));
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
    std::string buffer(5000, '\0');
    EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, 5000, buffer.data(), Callback, this));
    EXPECT_EQ(1u, callbacks);
    EXPECT_TRUE(Content(4096) == buffer.substr(0, 4096)) << "what came before stays";
}

TEST_F(Range, CancelledAtAnyCallbackGives0) {
    for (size_t last = 1; last <= 3; ++last) {
        Answer(Content(10000));
        callbacks = 0;
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        std::string buffer(10000, '\0');
        EXPECT_EQ(0, xfa704a3f(host, TEXT("/f"), 0, 10000, buffer.data(), Callback, this));
        EXPECT_EQ(last, callbacks);
    }
}

TEST_F(Range, BadArgumentsGiveMinus1AndSendNothing) {
    char buffer[4];
    EXPECT_EQ(-1, xfa704a3f(nullptr, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(-1, xfa704a3f(host, nullptr, 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(-1, xfa704a3f(host, TEXT("/f"), 0, 4, nullptr, nullptr, nullptr));
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(Range, WhereverMemoryRunsOutTheResultIsAFailureOrWhole) {
    Answer("abcd");
    for (size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        char buffer[4] = {};
        AllocationWatch watch(n, Failing::FromThereOn);
        const int32_t result = xfa704a3f(host, TEXT("/maps/file.map"), 0, 4, buffer, nullptr, nullptr);
        watch.Stop();
        EXPECT_EQ(watch.Failed() ? -1 : 4, result);
        if (!watch.Failed()) break;
        ASSERT_LT(n, 100u);
    }
}
