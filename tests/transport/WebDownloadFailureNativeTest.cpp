/* Downloads that are refused, break off, are cancelled or cannot be written: what becomes of the files. */
#include "transport/TransferFixture.h"

using Download = Transfer;

TEST_F(Download, ReplyCutByAnEndIsComplete) {
    WebReply reply = WebReply::WithBody(Content(5000));
    reply.breaks = WebReply::Break::Close;
    reply.breakAt = 4500;
    Answer(reply);
    EXPECT_EQ(1, Fetch());
    EXPECT_TRUE(Content(4500) == device.TakeFile(target).value_or("no file"));
}

TEST_F(Download, ReplyCutByAResetLeavesNeitherFile) {
    for (const uint64_t at : {0u, 1u, chunk - 1, chunk, chunk + 1, 3 * chunk - 1}) {
        SCOPED_TRACE(at);
        device.PutFile(target, "old");
        WebReply reply = WebReply::WithBody(Content(3 * chunk));
        reply.breaks = WebReply::Break::Reset;
        reply.breakAt = at;
        Answer(reply);
        EXPECT_EQ(0, Fetch());
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>(at / chunk * chunk), progress.bytesReceived);
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
        Answer(Content(5 * chunk));
        callbacks = 0;
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ(last, callbacks);
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>((last - 1) * chunk), progress.bytesReceived);
    }
}

TEST_F(Download, FullStorageLeavesNeitherFile) {
    for (const uint64_t room : {0u, 1u, chunk - 1, chunk, 3 * chunk - 1}) {
        SCOPED_TRACE(room);
        device.PutFile(target, "old");
        Answer(Content(3 * chunk));
        device.SetFreeStorage(room);
        EXPECT_EQ(0, Fetch());
        device.SetFreeStorage(std::nullopt);
        ExpectNeitherFile();
        EXPECT_EQ(static_cast<int64_t>(room / chunk * chunk), progress.bytesReceived);
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
