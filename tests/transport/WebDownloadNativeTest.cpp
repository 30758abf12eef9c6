#include "transport/TransferFixture.h"

using namespace std::string_literals;

using Download = Transfer;

TEST_F(Download, CallsOfOneDownloadFromConnectionToTheFileInItsPlace) {
    Answer("abc");
    EXPECT_EQ(1, x77fc64c7(host, TEXT("/maps/file.map"), target, nullptr, nullptr));
    const std::vector<std::string> expected = {
        R"(ConnMgrMapURL("http://www.orvande.example/", 0) = 0x00000000)",
        "ConnMgrEstablishConnectionSync({dwParams 0x1, dwPriority 0x8000, guidDestNet mapped}, 30000) = "
        "0x00000000, link 1, status 0x10",
        R"(InternetConnectW(earlier session 1, "maps.example", 80, null, null, 3, 0x00000000, 0) = )"
        "connection 1",
        R"(HttpOpenRequestW(connection 1, "GET", "/maps/file.map", null, null, null, 0x84280900, 0) = )"
        "request 1",
        "HttpSendRequestW(request 1, null, 0, null, 0) = TRUE",
        "HttpQueryInfoW(request 1, 0x20000013) = TRUE, 200",
        R"(DeleteFileW("\Storage\file.map") = FALSE, error 2)",
        R"(CreateFileW("\Storage\file.map.TMP", 0x40000000, 0, null, 2, 0x00000080, null) = file 1)",
        "InternetReadFile(request 1, " + std::to_string(chunk) + ") = TRUE, 3",
        "WriteFile(file 1, 3) = TRUE, 3",
        "InternetReadFile(request 1, " + std::to_string(chunk) + ") = TRUE, 0",
        "CloseHandle(file 1) = TRUE",
        "InternetCloseHandle(request 1) = TRUE",
        R"(MoveFileW("\Storage\file.map.TMP", "\Storage\file.map") = TRUE)",
        "InternetCloseHandle(connection 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls());
    EXPECT_EQ("abc", device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, FilesOfAllSizesArriveWhole) {
    for (const size_t size : {0u, 1u, chunk - 1, chunk, chunk + 1, 2 * chunk, 100'000u, 10'000'000u}) {
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
    Answer(Content(3 * chunk));
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ(4u, callbacks);
    EXPECT_EQ(4u, device.CountCalls("InternetReadFile"));
}

TEST_F(Download, CallbackIsAskedBeforeTheBytesOfItsReadAreWritten) {
    Answer(Content(2 * chunk));
    std::vector<std::pair<int64_t, size_t>> seen;
    atCallback = [&] {
        seen.emplace_back(progress.bytesReceived, device.CountCalls("WriteFile"));
        return 1;
    };
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ((std::vector<std::pair<int64_t, size_t>>{{0, 0}, {chunk, 1}, {2 * chunk, 2}}), seen);
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
    Answer(Content(chunk + 1));
    std::vector<int64_t> totals;
    atCallback = [&] {
        totals.push_back(progress.totalBytes);
        return 1;
    };
    EXPECT_EQ(1, Fetch());
    EXPECT_EQ((std::vector<int64_t>{chunk + 1, chunk + 1, chunk + 1}), totals);
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
    EXPECT_EQ(1u, device.CountCalls("ConnMgrEstablishConnectionSync"));
    EXPECT_EQ(0u, device.CountCalls("ConnMgrReleaseConnection"));
}
