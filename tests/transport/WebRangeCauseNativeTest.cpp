/* What ranged reads leave in the last error. */
#include "support/Causes.h"
#include "transport/TransferFixture.h"

namespace {

class RangeCause : public Transfer {
protected:
    /* After a read of `length` bytes that has this result. */
    DWORD CauseOfRead(int32_t result, int32_t length = 4) {
        std::string buffer(static_cast<size_t>(std::max(length, 1)), '\0');
        return CauseOf([&] {
            EXPECT_EQ(result, LMReadWebFileRange(host, TEXT("/f"), 0, length, buffer.data(), Callback, this));
        });
    }
};

}  // namespace

TEST_F(RangeCause, WholeOneLeaves0) {
    Answer(Content(3 * chunk));
    EXPECT_EQ(0u, CauseOfRead(4));
    EXPECT_EQ(0u, CauseOfRead(3 * chunk, 3 * chunk));
}

TEST_F(RangeCause, UnknownHostRefusedConnectionAndTimeOutAreWinInetsCodes) {
    EXPECT_EQ(12007u, CauseOfRead(-1));
    Answer(WebReply::Refused());
    EXPECT_EQ(12029u, CauseOfRead(-1));
    Answer(WebReply::TimedOut());
    EXPECT_EQ(12002u, CauseOfRead(-1));
}

TEST_F(RangeCause, HandleThatCouldNotBeOpenedIsTheCauseNotTheCallsThatNeedIt) {
    Answer("abcd");
    for (const char* function : {"InternetConnectW", "HttpOpenRequestW", "HttpSendRequestW"}) {
        SCOPED_TRACE(function);
        device.FailCall(function, 1, ERROR_INTERNET_OUT_OF_HANDLES);
        EXPECT_EQ(12001u, CauseOfRead(-1));
    }
}

TEST_F(RangeCause, RefusalsAreToldWithTheirHttpStatus) {
    for (const DWORD status : {300u, 404u, 416u, 500u, 1000u, 1001u}) {
        Answer(WebReply::WithStatus(status));
        for (const int32_t length : {4, 0, -1})
            EXPECT_EQ(HttpRefusal(status), CauseOfRead(-1, length));
    }
}

TEST_F(RangeCause, StatusThatCannotBeAskedIsTheCodeOfTheQuery) {
    Answer("abcd");
    device.FailCall("HttpQueryInfoW", 1, ERROR_HTTP_HEADER_NOT_FOUND);
    EXPECT_EQ(12150u, CauseOfRead(-1));
}

TEST_F(RangeCause, ReplyThatEndsBeforeTheLengthHasEnded) {
    for (const size_t size : {0u, 1u, 3u}) {
        Answer(Content(size));
        EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfRead(0));
    }
}

TEST_F(RangeCause, ReadThatFailsIsItsCode) {
    Answer(Content(2 * chunk));
    device.FailCall("InternetReadFile", 2, ERROR_INTERNET_CONNECTION_RESET);
    EXPECT_EQ(12031u, CauseOfRead(0, 2 * chunk));
}

TEST_F(RangeCause, FailedReadWithoutACodeIsAGeneralFailure) {
    Answer("abcd");
    device.FailCall("InternetReadFile", 1, 0);
    char buffer[4];
    SetLastError(0);
    EXPECT_EQ(0, LMReadWebFileRange(host, TEXT("/f"), 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(31u, GetLastError());
}

TEST_F(RangeCause, CancelledByTheCallback) {
    Answer(Content(2 * chunk));
    for (const size_t last : {1u, 2u}) {
        callbacks = 0;
        atCallback = [&] {
            SetLastError(77);
            return callbacks == last ? 0 : 1;
        };
        EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, CauseOfRead(0, 2 * chunk));
    }
    atCallback = [] {
        SetLastError(77);
        return 1;
    };
    EXPECT_EQ(0u, CauseOfRead(2 * chunk, 2 * chunk));
}

TEST_F(RangeCause, LengthOf0Leaves0AndANegativeOneIsABadArgumentThoughTheRequestIsSent) {
    Answer("abc");
    EXPECT_EQ(0u, CauseOfRead(0, 0));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfRead(0, -1));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfRead(0, INT32_MIN));
    EXPECT_EQ(3u, device.Requests().size());
}

TEST_F(RangeCause, NullForATextOrTheBufferIsABadArgument) {
    char buffer[4];
    const auto cause = [&](const WCHAR* server, const WCHAR* path, void* place) {
        return CauseOf([&] { xfa704a3f(server, path, 0, 4, place, nullptr, nullptr); });
    };
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, cause(nullptr, TEXT("/f"), buffer));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, cause(host, nullptr, buffer));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, cause(host, TEXT("/f"), nullptr));
}

TEST_F(RangeCause, SurvivesTheClosing) {
    Answer("abcd");
    device.FailCall("InternetCloseHandle", 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
    EXPECT_EQ(0u, CauseOfRead(4));
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfRead(0, 5));
}

TEST_F(RangeCause, ConnectionManagersFailureIsNone) {
    Answer("abcd");
    device.FailCall("ConnMgrMapURL", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(0u, CauseOfRead(4));
}

TEST_F(RangeCause, RequestThatCouldNotBeOpenedCountsMoreThanMemoryThatRanOutAfterwards) {
    Answer("abcd");
    bool isOpen = false;
    for (size_t n = 1; !isOpen; ++n) {
        SCOPED_TRACE(n);
        char buffer[4] = {};
        device.FailCall("HttpOpenRequestW", 1, ERROR_INTERNET_OUT_OF_HANDLES);
        AllocationWatch watch(n, Failing::FromThereOn);
        xfa704a3f(host, TEXT("/maps/file.map"), 0, 4, buffer, nullptr, nullptr);
        const DWORD cause = GetLastError();
        watch.Stop();
        isOpen = device.FailedCalls() > 0;
        EXPECT_EQ(isOpen ? 12001u : 8u, cause);
        device.StopFailing();
        ASSERT_LT(n, 100u);
    }
}

TEST_F(RangeCause, WithoutAnyMemoryNothingIsRead) {
    Answer("abcd");
    char buffer[4];
    AllocationWatch watch(1, Failing::FromThereOn);
    const int32_t result = LMReadWebFileRange(host, TEXT("/f"), 0, 4, buffer, Callback, this);
    watch.Stop();
    EXPECT_EQ(-1, result);
    EXPECT_TRUE(device.Requests().empty());
}

TEST_F(RangeCause, RequestThatWasNotSentIsNotAskedForItsStatus) {
    Answer(WebReply::Refused());
    EXPECT_EQ(12029u, CauseOfRead(-1));
    EXPECT_EQ(0u, device.CountCalls("HttpQueryInfoW"));
}
