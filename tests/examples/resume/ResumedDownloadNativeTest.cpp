/* Downloads that go on: what comes again after each way to break off, and what is kept. */
#include "examples/resume/ResumeFixture.h"

#include <new>

namespace {

int LM_CALL Cancel(void* /*context*/) {
    return 0;
}

/* Cancels when it is called for the n-th time. */
int LM_CALL CancelLater(void* context) {
    return --*static_cast<int*>(context) > 0 ? 1 : 0;
}

}  // namespace

TEST_F(Resume, ComesInPiecesWithoutAnEarlierDownload) {
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
    EXPECT_EQ(0, takenOver);
    std::vector<std::u16string> ranges;
    for (const WebRequest& request : device.Requests())
        ranges.push_back(request.headers);
    const std::vector<std::u16string> expected = {
        u"",
        u"Range:bytes=0-4095\n",
        u"Range:bytes=1-4096\n",
        u"Range:bytes=0-65535\n",
        u"Range:bytes=65536-131071\n",
        u"Range:bytes=131072-196607\n",
        u"Range:bytes=196608-262143\n",
        u"Range:bytes=262144-262243\n",
        u"",
        u"Range:bytes=0-4095\n",
        u"Range:bytes=131122-135217\n",
        u"Range:bytes=258148-262243\n",
    };
    EXPECT_EQ(expected, ranges);
}

TEST_F(Resume, GoesOnAfterBreakingOffAtEachRequest) {
    requestsUntilSilence = 0;
    size_t broken = 0;
    while (Run() != resumeDone) {
        EXPECT_EQ(DWORD{ERROR_INTERNET_CANNOT_CONNECT}, error);
        ExpectOlder();
        requestsUntilSilence = ++broken;
        device.ForgetCalls();
    }
    ExpectWhole();
    EXPECT_LT(5u, broken) << "as many requests as there are in a run that goes on";
}

TEST_F(Resume, OfWhatHadComeOnlyTheLastPieceComesAgain) {
    BreakOffAfter(3);
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(LMInt64{2 * pieceSize}, takenOver);
    ExpectWhole();
}

TEST_F(Resume, LastPieceThatNeverReachedTheDiskComesAgain) {
    BreakOffAfter(3);
    std::string torn = device.TakeFile(part).value_or("");
    torn.replace(2 * pieceSize, pieceSize, pieceSize, '\0');
    device.PutFile(part, torn);
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
    BreakOffAfter(3);
    device.PutFile(part, device.TakeFile(part).value_or("").substr(0, 2 * pieceSize + 7));
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
}

TEST_F(Resume, PartThatIsLongerThanTheFileBeginsAnew) {
    BreakOffAfter(3);
    device.PutFile(part, content + "x");
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(0, takenOver);
    ExpectWhole();
}

TEST_F(Resume, CancelledAtEachReadKeepsWhatHasCome) {
    EXPECT_EQ(resumeCancelled, Run(Cancel));
    ExpectOlder();
    int reads = 1;
    for (int left = reads; Run(CancelLater, &left) != resumeDone; left = ++reads) {
        EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, error);
        ExpectOlder();
    }
    ExpectWhole();
}

TEST_F(Resume, RefusalIsToldWithItsStatus) {
    device.AddHost(host, 80, WebReply::WithStatus(404));
    EXPECT_EQ(resumeBrokenOff, Run());
    EXPECT_EQ(DWORD{LM_ERROR_HTTP_STATUS + 404}, error);
    ExpectOlder();
}

TEST_F(Resume, StorageThatIsFullKeepsWhatFitted) {
    device.SetFreeStorage(3 * pieceSize);
    EXPECT_EQ(resumeNotWritten, Run());
    EXPECT_EQ(DWORD{ERROR_DISK_FULL}, error);
    ExpectOlder();
    device.SetFreeStorage({});
    EXPECT_EQ(resumeDone, Run());
    EXPECT_LT(0, takenOver);
    ExpectWhole();
}

TEST_F(Resume, OlderFileThatCannotBeReplacedStaysBesideTheWholePart) {
    device.SetReadOnly(file, true);
    EXPECT_EQ(resumeNotWritten, Run());
    EXPECT_EQ(DWORD{ERROR_ACCESS_DENIED}, error);
    ExpectOlder();
    EXPECT_TRUE(content == device.TakeFile(part));
    device.SetReadOnly(file, false);
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(LMInt64{3 * pieceSize}, takenOver);
    ExpectWhole();
}

TEST_F(Resume, FolderThatIsNotThereIsNoMatterOfTheServer) {
    const ResumedDownload::Functions library = {LMDownloadWebFileProgress, LMReadWebFileRange};
    ResumedDownload download(library, host, u"/maps/a.map", u"\\None\\a.map");
    EXPECT_EQ(resumeNotWritten, download.Run(nullptr, nullptr));
    EXPECT_EQ(DWORD{ERROR_PATH_NOT_FOUND}, download.Error());
}

TEST_F(Resume, PartThatAnotherDownloadHasOpenIsLeftAlone) {
    BreakOffAfter(2);
    const HANDLE open = CreateFileW(part, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(resumeNotWritten, Run());
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, error);
    CloseHandle(open);
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(LMInt64{pieceSize}, takenOver);
}

TEST_F(Resume, OtherPathBeginsAnew) {
    BreakOffAfter(3);
    const ResumedDownload::Functions library = {LMDownloadWebFileProgress, LMReadWebFileRange};
    ResumedDownload download(library, host, u"/maps/b.map", file);
    EXPECT_EQ(resumeDone, download.Run(nullptr, nullptr));
    EXPECT_EQ(0, download.TakenOver());
    ExpectWhole();
}

TEST_F(Resume, DescriptionIsTextForEditors) {
    BreakOffAfter(1);
    EXPECT_EQ("\xFF\xFE" + BytesOf(u"maps.example\r\n/maps/a.map\r\n262244 bytes\r\n"),
              device.TakeFile(description));
}

TEST_F(Resume, MemoryThatRunsOutLosesNothing) {
    size_t failed = 0;
    for (bool isDone = false; !isDone;) {
        AllocationWatch watch(++failed);
        try {
            isDone = Run() == resumeDone;
        } catch (const std::bad_alloc&) {
        }
        watch.Stop();
        if (!isDone) ExpectOlder();
        device.ForgetCalls();
    }
    ExpectWhole();
}
