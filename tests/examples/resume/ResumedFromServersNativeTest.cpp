/* Downloads that go on, from servers whose files change and from those that do not know parts. */
#include "examples/resume/ResumeFixture.h"

namespace {

using ResumeChanged = Resume;
using ResumeWhole = Resume;

/* Changes what the host has, when the callback is called for the n-th time. */
struct Change {
    std::string& content;
    std::string next;
    int calls;
};

int LM_CALL ChangeLater(void* context) {
    Change& change = *static_cast<Change*>(context);
    if (--change.calls == 0) change.content = change.next;
    return 1;
}

}  // namespace

TEST_F(ResumeChanged, FileOfAnotherLengthBeginsAnew) {
    BreakOffAfter(3);
    content += "x";
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(0, takenOver);
    ExpectWhole();
}

TEST_F(ResumeChanged, FileOfTheSameLengthBeginsAnewIfASampleDiffers) {
    // In the first, the middle and the last sample of the two pieces that count.
    for (const size_t changed : {size_t{0}, pieceSize + 4095, 2 * pieceSize - 1}) {
        SCOPED_TRACE(changed);
        BreakOffAfter(3);
        content[changed] = static_cast<char>(content[changed] ^ 1);
        EXPECT_EQ(resumeDone, Run());
        EXPECT_EQ(0, takenOver);
        ExpectWhole();
        device.PutFile(file, "older");
    }
}

TEST_F(ResumeChanged, ChangeOutsideOfTheSamplesIsNotNoticed) {
    BreakOffAfter(3);
    const std::string before = content;
    content[5000] = static_cast<char>(content[5000] ^ 1);
    EXPECT_EQ(resumeDone, Run());
    EXPECT_TRUE(before == device.TakeFile(file)) << "the header says so";
}

TEST_F(ResumeChanged, WhileItComesKeepsNothingAndTheOlderFile) {
    for (const std::string& next : {Content(size, 2), Content(size + 1, 1)}) {
        content = Content(size);
        Change change{content, next, 60};
        EXPECT_EQ(resumeFileChanged, Run(ChangeLater, &change));
        ExpectOlder();
        EXPECT_FALSE(device.Exists(part));
        EXPECT_FALSE(device.Exists(description));
    }
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
}

TEST_F(ResumeChanged, FileThatHasBecomeShorterThanAPieceComesWhole) {
    BreakOffAfter(3);
    content = Content(100, 2);
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
}

TEST_F(ResumeWhole, FilesOfAtMostAPieceComeInOneRequest) {
    for (const size_t length : {size_t{0}, size_t{1}, pieceSize}) {
        content = Content(length);
        const size_t before = device.Requests().size();
        EXPECT_EQ(resumeDone, Run());
        EXPECT_EQ(before + 2, device.Requests().size()) << "the length, and the file";
        ExpectWhole();
    }
}

TEST_F(ResumeWhole, ServerThatIgnoresRangesIsNoticed) {
    knowsRanges = false;
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
    EXPECT_EQ(u"", device.Requests().back().headers);
}

TEST_F(ResumeWhole, ServerThatHasForgottenRangesBringsTheWholeFile) {
    BreakOffAfter(3);
    knowsRanges = false;
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
}

TEST_F(ResumeWhole, FileThatBeginsWithEqualBytesComesWhole) {
    content.replace(0, 4097, 4097, '\0');
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
    EXPECT_EQ(u"", device.Requests().back().headers);
    content[4096] = 'x';
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
    EXPECT_NE(u"", device.Requests().back().headers) << "one byte fewer tells";
}

TEST_F(ResumeWhole, UnknownLengthComesWhole) {
    announcesLength = false;
    EXPECT_EQ(resumeDone, Run());
    ExpectWhole();
}

TEST_F(ResumeWhole, ReplyThatEndsEarlyKeepsTheOlderFile) {
    device.AddHost(host, 80, [this](const WebRequest&) {
        WebReply reply = WebReply::WithBody(content.substr(0, 1000));
        reply.breaks = WebReply::Break::Close;
        reply.breakAt = 999;
        return reply;
    });
    EXPECT_EQ(resumeBrokenOff, Run());
    EXPECT_EQ(DWORD{LM_ERROR_REPLY_ENDED}, error);
    ExpectOlder();
    EXPECT_FALSE(device.Exists(part));
}

TEST_F(ResumeWhole, CancelledKeepsTheOlderFile) {
    knowsRanges = false;
    announcesLength = false;
    EXPECT_EQ(resumeCancelled, Run([](void*) { return 0; }));
    EXPECT_EQ(DWORD{LM_ERROR_CANCELLED}, error);
    ExpectOlder();
    EXPECT_FALSE(device.Exists(part));
}
