/* Whole downloads of replies of every other kind: without or with a wrong length, cut, refused, not there. */
#include "transport/TransferTest.h"

#include <algorithm>

#include "helpers/LocalFiles.h"

using namespace std::string_literals;

namespace {

class DownloadReply : public TransferTest {
protected:
    /* Answers with `reply` and then a reset. It waits until the head has been taken in, which it could
     * otherwise overtake. */
    void AnswerAndReset(std::string reply) {
        ConnectionScript script{std::move(reply), ConnectionScript::Ending::Reset};
        script.beforeEnding = [this] { WaitForFile(temporary); };
        server.Answer(std::move(script));
    }

    /* A head for 10000 bytes, and the first `size` of them. */
    static std::string Cut(size_t size) { return Head("200 OK", LengthField(10000)) + Content(size); }

    /* A read that brings some bytes and a reset fails under Wine, or tells of the bytes and then of the end,
     * as it happens to arrive. Expects a download that meets one to be a failure or a file of the beginning
     * of `content`. */
    void ExpectNoFileOrTheBeginningOf(const std::string& content) {
        if (DownloadOverOldFile() == 0) {
            ExpectNoFiles();
            return;
        }
        EXPECT_EQ(std::vector<std::wstring>{L"file.map"}, folder.Names());
        EXPECT_TRUE(content.starts_with(ContentOf(target)));
        EXPECT_EQ(static_cast<int64_t>(ContentOf(target).size()), progress.bytesReceived);
    }

    /* `bytes` as chunks of those sizes, over and over again, without the last, empty one. */
    static std::string Chunks(std::string_view bytes, const std::vector<size_t>& sizes) {
        std::string chunks;
        for (size_t i = 0; !bytes.empty(); ++i) {
            const std::string_view chunk = bytes.substr(0, sizes[i % sizes.size()]);
            char size[20];
            snprintf(size, sizeof size, "%x\r\n", static_cast<unsigned>(chunk.size()));
            chunks += size + std::string(chunk) + "\r\n";
            bytes.remove_prefix(chunk.size());
        }
        return chunks;
    }

    static constexpr const char* chunkedField = "Transfer-Encoding: chunked\r\n";
    static constexpr size_t cuts[] = {0, 1, 4095, 4096, 4097, 8192, 9999};
};

}  // namespace

TEST_F(DownloadReply, WithoutALengthCountsUpAllTheSame) {
    for (const size_t size : {0U, 1U, 4095U, 4096U, 4097U, 1U << 20}) {
        SCOPED_TRACE(size);
        AnswerRaw(Head("200 OK") + Content(size));
        ExpectDownloadOf(Content(size), -1);
        AnswerRaw("HTTP/1.0 200 OK\r\n\r\n" + Content(size));
        ExpectDownloadOf(Content(size), -1);
    }
}

TEST_F(DownloadReply, InChunksIsOneFile) {
    for (const size_t size : {0U, 1U, 4096U, 4097U, 100'000U}) {
        SCOPED_TRACE(size);
        AnswerRaw(Head("200 OK", chunkedField) + Chunks(Content(size), {1, 4095, 4097, 20000}) + "0\r\n\r\n");
        ExpectDownloadOf(Content(size), -1);
    }
}

TEST_F(DownloadReply, LengthThatIsTooLargeIsAsGoodAsTheRightOne) {
    AnswerRaw(Head("200 OK", LengthField(100'000)) + Content(5000));
    ExpectDownloadOf(Content(5000), 100'000);
}

// WinINet may take no more of a body than was announced, except for what came along with the head. Whatever
// it gives is the file.
TEST_F(DownloadReply, LengthThatIsTooSmallDoesNotSpoilTheBytes) {
    for (const size_t size : {5000U, 100'000U}) {
        for (const size_t length : {0U, 1U, 4096U, 4999U}) {
            SCOPED_TRACE(testing::Message() << length << " in place of " << size);
            AnswerRaw(Head("200 OK", LengthField(length)) + Content(size));
            EXPECT_EQ(1, DownloadOverOldFile());
            const std::string received = ContentOf(target);
            EXPECT_LE(length, received.size());
            EXPECT_TRUE(Content(size).starts_with(received));
            EXPECT_EQ(std::vector<std::wstring>{L"file.map"}, folder.Names());
            EXPECT_EQ(static_cast<int64_t>(received.size()), progress.bytesReceived);
            EXPECT_EQ(static_cast<int64_t>(length), progress.totalBytes);
        }
    }
}

TEST_F(DownloadReply, LengthAbove4GigabytesIsToldWhole) {
    AnswerRaw(Head("200 OK", LengthField(5'000'000'000)) + "abc");
    ExpectDownloadOf("abc", 5'000'000'000);
}

TEST_F(DownloadReply, LengthThatIsNoNumberIsUnknown) {
    AnswerRaw(Head("200 OK", "Content-Length: many\r\n") + Content(5000));
    ExpectDownloadOf(Content(5000), -1);
}

TEST_F(DownloadReply, LengthOfMoreDigitsThanAnyFileNeedsIsUnknown) {
    AnswerRaw(Head("200 OK", "Content-Length: 00000000005000\r\n") + Content(5000));
    ExpectDownloadOf(Content(5000), 5000);
    AnswerRaw(Head("200 OK", "Content-Length: 000000000005000\r\n") + Content(5000));
    ExpectDownloadOf(Content(5000), -1);
}

TEST_F(DownloadReply, CutByAnEndIsComplete) {
    for (const size_t at : cuts) {
        SCOPED_TRACE(at);
        AnswerRaw(Cut(at));
        ExpectDownloadOf(Content(at), 10000);
    }
}

TEST_F(DownloadReply, CutByAResetBeforeTheFirstByteLeavesNoByte) {
    AnswerAndReset(Cut(0));
    if (DownloadOverOldFile() == 0) {
        ExpectNoFiles();
        EXPECT_EQ(0U, callbacks) << "a failed read is not reported";
    } else {
        // One that arrives just before a read passes for the end.
        EXPECT_EQ("", ContentOf(target));
        EXPECT_EQ(1U, callbacks);
    }
    EXPECT_EQ(0, progress.bytesReceived);
    EXPECT_EQ(10000, progress.totalBytes);
}

// WinINet may take a reset for an end. Then the beginning of the file is all that there is to know of.
TEST_F(DownloadReply, CutByAResetLeavesNoFileOrTheBeginning) {
    for (const size_t at : cuts) {
        SCOPED_TRACE(at);
        AnswerAndReset(Cut(at));
        ExpectNoFileOrTheBeginningOf(Content(at));
    }
}

TEST_F(DownloadReply, OfStatus299IsTaken) {
    for (const char* status : {"200 OK", "201 Created", "299 Fine"}) {
        SCOPED_TRACE(status);
        AnswerRaw(Head(status, LengthField(3)) + "abc");
        ExpectDownloadOf("abc", 3);
    }
}

TEST_F(DownloadReply, OfStatus300AndAboveLeavesTheOldFileUntouched) {
    for (const char* status :
         {"300 Multiple Choices", "304 Not Modified", "401 Unauthorized", "404 Not Found",
          "416 Range Not Satisfiable", "500 Internal Server Error", "999 Odd"}) {
        SCOPED_TRACE(status);
        AnswerRaw(Head(status, LengthField(3)) + "abc");
        EXPECT_EQ(0, DownloadOverOldFile());
        ExpectOldFileUntouched();
    }
}

TEST_F(DownloadReply, OfARefusalMakesNoFileWhereNoneWas) {
    AnswerRaw(Head("404 Not Found", LengthField(3)) + "abc");
    EXPECT_EQ(0, Download());
    ExpectNoFiles();
}

TEST_F(DownloadReply, RedirectionsAreNotFollowed) {
    for (const char* status :
         {"301 Moved Permanently", "302 Found", "303 See Other", "307 Temporary Redirect"}) {
        SCOPED_TRACE(status);
        AnswerRaw(Head(status, "Location: http://maps.example/other.map\r\n" + LengthField(0)));
        EXPECT_EQ(0, DownloadOverOldFile());
        ExpectOldFileUntouched();
        EXPECT_EQ(1U, server.TakeRequests().size());
    }
}

// Whether the sending fails, or WinINet under Wine takes it for a reply of status 0, depends on when the
// reset arrives.
TEST_F(DownloadReply, ResetInPlaceOfAReplyFailsOrIsAnEmptyFile) {
    for (const bool takesRequest : {true, false}) {
        server.Answer(ConnectionScript{"", ConnectionScript::Ending::Reset, takesRequest});
        if (DownloadOverOldFile() == 0) {
            ExpectOldFileUntouched();
        } else {
            EXPECT_EQ("", ContentOf(target));
            EXPECT_EQ(std::vector<std::wstring>{L"file.map"}, folder.Names());
            EXPECT_EQ(0, progress.bytesReceived);
        }
    }
}

// To WinINet under Wine a reply that ends before its head does is one of no bytes, of status 0 when even the
// first line is not whole: that is no refusal, so the download is complete.
TEST_F(DownloadReply, ThatEndsBeforeItsHeadDoesIsAnEmptyFile) {
    const std::string head = Head("200 OK", LengthField(3));
    const size_t lengthTold = head.size() - 2;
    for (size_t size = 0; size < head.size(); ++size) {
        SCOPED_TRACE(size);
        AnswerRaw(head.substr(0, size));
        ExpectDownloadOf("", size < lengthTold ? -1 : 3);
    }
}

TEST_F(DownloadReply, InChunksCutByAnEndIsComplete) {
    const std::string chunks = Chunks(Content(5000), {4096, 904});
    const size_t firstData = "1000\r\n"s.size();
    const size_t secondData = firstData + 4096 + "\r\n388\r\n"s.size();
    for (const size_t size :
         {0U, 1U, 5U, 6U, 7U, 4101U, 4102U, 4103U, 4104U, 4108U, 4109U, 4110U, 5012U, 5013U}) {
        SCOPED_TRACE(size);
        size_t data = size < firstData ? 0 : std::min<size_t>(size - firstData, 4096);
        if (size > secondData) data += std::min<size_t>(size - secondData, 904);
        AnswerRaw(Head("200 OK", chunkedField) + chunks.substr(0, size));
        ExpectDownloadOf(Content(data), -1);
    }
}

TEST_F(DownloadReply, InChunksCutByAResetLeavesNoFileOrTheBeginning) {
    const std::string chunks = Chunks(Content(5000), {4096});
    for (const size_t size : {0U, 1U, 6U, 4000U, 4102U, 4104U, 4109U, 5000U, 5015U}) {
        SCOPED_TRACE(size);
        AnswerAndReset(Head("200 OK", chunkedField) + chunks.substr(0, size));
        ExpectNoFileOrTheBeginningOf(Content(5000));
    }
}

// What WinINet makes of them is its own affair.
TEST_F(DownloadReply, BytesThatAreNoHttpLeaveNoTemporaryFile) {
    for (const std::string& bytes :
         {"\xFF\xFE\0\0garbage\n\n"s, "HTTP/1.1 two hundred\r\n\r\nabc"s, "\r\n\r\n"s,
          std::string(100'000, 'x'), Head("200 OK", chunkedField) + "no number\r\nabc\r\n",
          Head("200 OK", chunkedField) + "-5\r\nabc\r\n"}) {
        SCOPED_TRACE(bytes.substr(0, 40));
        AnswerRaw(bytes);
        const int32_t result = DownloadOverOldFile();
        EXPECT_TRUE(result == 0 || result == 1);
        EXPECT_FALSE(Exists(temporary));
        EXPECT_TRUE(result == 0 || Exists(target));
    }
}
