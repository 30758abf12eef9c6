/* What downloads leave in the last error. */
#include "support/Causes.h"
#include "transport/TransferFixture.h"

namespace {

class DownloadCause : public Transfer {
protected:
    /* After a download that has this result. */
    DWORD CauseOfDownload(int32_t result) {
        return CauseOf([&] { EXPECT_EQ(result, Fetch()); });
    }

    /* The same without a record and a callback, by the other function. */
    DWORD CauseOfPlainDownload(int32_t result) {
        return CauseOf(
            [&] { EXPECT_EQ(result, LMDownloadWebFile(host, TEXT("/f"), target, nullptr, nullptr)); });
    }

    void AnswerLength(const WCHAR* length, size_t size) {
        WebReply reply = WebReply::WithBody(Content(size));
        reply.headers = {{u"Content-Length", length}};
        Answer(std::move(reply));
    }
};

}  // namespace

TEST_F(DownloadCause, CompleteOneLeaves0) {
    for (const size_t size : {0u, 3u, 3 * chunk}) {
        Answer(Content(size));
        EXPECT_EQ(0u, CauseOfDownload(1));
        EXPECT_EQ(0u, CauseOfPlainDownload(1));
    }
}

TEST_F(DownloadCause, UnknownHostRefusedConnectionAndTimeOutAreWinInetsCodes) {
    EXPECT_EQ(12007u, CauseOfDownload(0));
    Answer(WebReply::Refused());
    EXPECT_EQ(12029u, CauseOfDownload(0));
    Answer(WebReply::TimedOut());
    EXPECT_EQ(12002u, CauseOfDownload(0));
    EXPECT_EQ(12002u, CauseOfPlainDownload(0));
}

TEST_F(DownloadCause, HandleThatCouldNotBeOpenedIsTheCauseNotTheCallsThatNeedIt) {
    Answer("abc");
    for (const char* function : {"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_INTERNET_OUT_OF_HANDLES);
        EXPECT_EQ(12001u, CauseOfDownload(0));
    }
}

TEST_F(DownloadCause, FailedCallWithoutACodeIsAGeneralFailure) {
    Answer("abc");
    for (const char* function : {"HttpSendRequestW", "InternetReadFile", "CreateFileW", "WriteFile"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, 0);
        SetLastError(0);
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ(31u, GetLastError());
    }
}

TEST_F(DownloadCause, RefusalsAreToldWithTheirHttpStatus) {
    for (const DWORD status : {300u, 302u, 401u, 404u, 407u, 500u, 999u, 1000u, 1001u}) {
        Answer(WebReply::WithStatus(status));
        EXPECT_EQ(HttpRefusal(status), CauseOfDownload(0));
        EXPECT_EQ(HttpRefusal(status), CauseOfPlainDownload(0));
    }
    EXPECT_EQ(0x21000194u, HttpRefusal(404)) << "as the header has it";
}

TEST_F(DownloadCause, StatusThatCannotBeAskedIsTheCodeOfTheQuery) {
    Answer("abc");
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(12150u, CauseOfDownload(0));
}

TEST_F(DownloadCause, ReadThatFailsIsItsCode) {
    for (const size_t n : {1u, 2u}) {
        Answer(Content(2 * chunk));
        device.FailCall("InternetReadFile", n, ERROR_INTERNET_CONNECTION_ABORTED);
        EXPECT_EQ(12030u, CauseOfDownload(0));
    }
}

TEST_F(DownloadCause, ResetIsItsCodeAlthoughItsReadBroughtBytes) {
    WebReply reply = WebReply::WithBody(Content(100));
    reply.breaks = WebReply::Break::Reset;
    reply.breakAt = 50;
    Answer(std::move(reply));
    EXPECT_EQ(10054u, CauseOfDownload(0));
}

TEST_F(DownloadCause, ReplyShorterThanAnnouncedHasEndedAndItsFileIsThere) {
    AnswerLength(TEXT("100"), 99);
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfDownload(1));
    EXPECT_TRUE(Content(99) == device.TakeFile(target).value_or("no file"));
    EXPECT_EQ(0u, CauseOfPlainDownload(1)) << "without a record the length is not looked at";
    AnswerLength(TEXT("5000000000"), 0);
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfDownload(1)) << "of more than 32 bits";
}

TEST_F(DownloadCause, ReplyAsLongAsAnnouncedOrLongerOrOfAnUnknownLengthLeaves0) {
    for (const WCHAR* length : {TEXT("100"), TEXT("99"), TEXT("0"), TEXT("-5"), TEXT("many")}) {
        AnswerLength(length, 100);
        EXPECT_EQ(0u, CauseOfDownload(1));
        EXPECT_EQ(0u, CauseOfPlainDownload(1));
    }
    WebReply reply = WebReply::WithBody("abc");
    reply.sendsContentLength = false;
    Answer(std::move(reply));
    EXPECT_EQ(0u, CauseOfDownload(1));
}

TEST_F(DownloadCause, WhatTheCallbackWritesIntoTheRecordDoesNotMatter) {
    Answer(Content(2 * chunk));
    atCallback = [this] {
        progress.totalBytes = 1000000;
        return 1;
    };
    EXPECT_EQ(0u, CauseOfDownload(1));
    AnswerLength(TEXT("100"), 99);
    atCallback = [this] {
        progress.totalBytes = -1;
        return 1;
    };
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfDownload(1));
}

TEST_F(DownloadCause, CancelledByTheCallback) {
    Answer(Content(2 * chunk));
    for (const size_t last : {1u, 2u, 3u}) {
        callbacks = 0;
        atCallback = [&] { return callbacks == last ? 0 : 1; };
        EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, CauseOfDownload(0));
    }
}

TEST_F(DownloadCause, ErrorsThatTheCallbackSetsDoNotMatter) {
    Answer(Content(2 * chunk));
    atCallback = [] {
        SetLastError(77);
        return 1;
    };
    EXPECT_EQ(0u, CauseOfDownload(1));
    atCallback = [] {
        SetLastError(77);
        return 0;
    };
    EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, CauseOfDownload(0));
}

TEST_F(DownloadCause, TemporaryFileThatCannotBeMadeIsItsCode) {
    Answer("abc");
    device.FailCall("CreateFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(5u, CauseOfDownload(0));
    EXPECT_EQ(
        3u, CauseOf([] { EXPECT_EQ(0, x77fc64c7(host, TEXT("/f"), TEXT("\\None\\f"), nullptr, nullptr)); }));
}

TEST_F(DownloadCause, FullStorageIs112WhetherTheWriteFailsOrIsShort) {
    Answer(Content(2 * chunk));
    for (const uint64_t room : {0u, 1u, chunk, chunk + 1}) {
        SCOPED_TRACE(room);
        device.SetFreeStorage(room);
        EXPECT_EQ(112u, CauseOfDownload(0));
    }
    device.SetFreeStorage(std::nullopt);
    device.FailCall("WriteFile", 2, ERROR_WRITE_FAULT);
    EXPECT_EQ(29u, CauseOfDownload(0)) << "another failure is its own code";
}

TEST_F(DownloadCause, MoveThatFailsIsItsCodeAndTheResultStays1) {
    Answer("abc");
    device.FailCall("MoveFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(5u, CauseOfDownload(1));
    device.PutFile(target, "old");
    device.SetReadOnly(target, true);
    EXPECT_EQ(183u, CauseOfPlainDownload(1)) << "a file is there already";
}

TEST_F(DownloadCause, MoveThatFailsCountsMoreThanAReplyThatWasShort) {
    AnswerLength(TEXT("100"), 99);
    device.FailCall("MoveFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(5u, CauseOfDownload(1));
}

TEST_F(DownloadCause, OlderFileThatIsNotThereToBeDeletedIsNoFailure) {
    Answer("abc");
    EXPECT_EQ(0u, CauseOfDownload(1));
    EXPECT_EQ(1u, device.CountCalls("DeleteFileW"));
}

TEST_F(DownloadCause, SurvivesTheClosingAndTheRemovalOfTheTemporaryFile) {
    for (const char* function : {"InternetCloseHandle", "CloseHandle", "DeleteFileW"}) {
        SCOPED_TRACE(function);
        Answer(Content(chunk));
        device.FailCall(function, 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
        EXPECT_EQ(0u, CauseOfDownload(1));
        device.FailCall("InternetReadFile", 2, ERROR_INTERNET_TIMEOUT);
        EXPECT_EQ(12002u, CauseOfDownload(0));
        device.StopFailing();
    }
}

TEST_F(DownloadCause, ConnectionManagersFailureIsNone) {
    Answer("abc");
    device.FailCall("ConnMgrEstablishConnectionSync", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(0u, CauseOfDownload(1));
}

TEST_F(DownloadCause, NullForATextIsABadArgument) {
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT},
              CauseOf([] { x77fc64c7(nullptr, TEXT("/f"), target, nullptr, nullptr); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT},
              CauseOf([] { x77fc64c7(host, nullptr, target, nullptr, nullptr); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOf([&] {
                  LMDownloadWebFileProgress(host, TEXT("/f"), nullptr, Callback, this, &progress);
              }));
}
