/* What downloads and ranged reads leave in the last error, with Windows' own WinINet. */
#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "support/Causes.h"
#include "transport/TransferTest.h"

namespace {

class TransferCause : public TransferTest {
protected:
    DWORD CauseOfDownload(int32_t result) {
        return CauseOf([&] { EXPECT_EQ(result, Download()); });
    }

    DWORD CauseOfRange(int32_t result, int32_t length = 4) {
        char buffer[100];
        return CauseOf(
            [&] { EXPECT_EQ(result, library.readRange(host, urlPath, 0, length, buffer, Callback, this)); });
    }

    void AnswerFile(size_t size) { AnswerRaw(Head("200 OK", LengthField(size)) + Content(size)); }
};

}  // namespace

TEST_F(TransferCause, WholeOnesLeave0) {
    AnswerFile(100'000);
    EXPECT_EQ(0U, CauseOfDownload(1));
    EXPECT_EQ(0U, CauseOfRange(100, 100));
    EXPECT_EQ(0U, CauseOfRange(0, 0));
}

TEST_F(TransferCause, RefusalsAreToldWithTheirHttpStatus) {
    for (const DWORD status : {302U, 404U, 416U, 500U}) {
        AnswerRaw(Head(std::to_string(status) + " No", LengthField(3)) + "abc");
        EXPECT_EQ(HttpRefusal(status), CauseOfDownload(0));
        EXPECT_EQ(HttpRefusal(status), CauseOfRange(-1));
    }
}

TEST_F(TransferCause, RepliesCutByAnEndHaveEnded) {
    AnswerRaw(Head("200 OK", LengthField(10000)) + Content(9999));
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfDownload(1));
    AnswerFile(3);
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, CauseOfRange(0));
}

TEST_F(TransferCause, ResetBeforeTheFirstByteIsTheSystemsCode) {
    ConnectionScript script{Head("200 OK", LengthField(10000)), ConnectionScript::Ending::Reset};
    script.beforeEnding = [this] { WaitForFile(temporary); };
    server.Answer(std::move(script));
    // One that arrives just before a read passes for the end.
    int32_t result = 0;
    const DWORD cause = CauseOf([&] { result = Download(); });
    EXPECT_EQ(result == 1 ? DWORD{LM_ERROR_REPLY_ENDED} : 10054U, cause);
}

TEST_F(TransferCause, CancelledByTheCallbackWhateverItSets) {
    AnswerFile(100'000);
    atCallback = [] {
        SetLastError(77);
        return 0;
    };
    EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, CauseOfDownload(0));
    EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, CauseOfRange(0));
    atCallback = [] {
        SetLastError(77);
        return 1;
    };
    EXPECT_EQ(0U, CauseOfDownload(1));
}

TEST_F(TransferCause, FileThatCannotBeMadeIsTheSystemsCode) {
    AnswerFile(3);
    const std::wstring nowhere = folder.Path() + L"\\none\\file.map";
    EXPECT_EQ(3U, CauseOf([&] { library.download(host, urlPath, nowhere.c_str(), nullptr, nullptr); }));
    ASSERT_TRUE(CreateDirectoryW(temporary.c_str(), nullptr));
    EXPECT_EQ(5U, CauseOfDownload(0));
    RemoveDirectoryW(temporary.c_str());
}

TEST_F(TransferCause, FileThatCannotBeReplacedIsTheMovesCode) {
    AnswerFile(3);
    atCallback = [this] {
        PutFile(target, "made meanwhile");
        return 1;
    };
    EXPECT_EQ(183U, CauseOfDownload(1));
}

TEST_F(TransferCause, BadArgumentsAreTold) {
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT},
              CauseOf([&] { library.download(nullptr, urlPath, target.c_str(), nullptr, nullptr); }));
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT},
              CauseOf([&] { library.readRange(host, urlPath, 0, 4, nullptr, nullptr, nullptr); }));
    EXPECT_EQ(0U, server.TakeRequests().size());
    AnswerFile(3);
    EXPECT_EQ(DWORD{LM_ERROR_BAD_ARGUMENT}, CauseOfRange(0, -1));
}

namespace {

/* Both kinds of transfer, by a library that is loaded when the way to the hosts is known. */
void ExpectCauseOfTransfers(DWORD cause) {
    const ShippedLibrary library;
    const ScratchFolder folder;
    const std::wstring target = folder.Path() + L"\\file.map";
    char buffer[4];
    EXPECT_EQ(cause,
              CauseOf([&] { library.download(L"maps.invalid", L"/f", target.c_str(), nullptr, nullptr); }));
    EXPECT_EQ(cause,
              CauseOf([&] { library.readRange(L"maps.invalid", L"/f", 0, 4, buffer, nullptr, nullptr); }));
}

}  // namespace

TEST(UnreachableTransferCause, UnknownHostIs12007) {
    ExpectCauseOfTransfers(12007);
}

TEST(UnreachableTransferCause, ClosedPortIs12029) {
    const ClosedPort closed;
    const WebProxy nobody(closed.Number());
    ExpectCauseOfTransfers(12029);
}
