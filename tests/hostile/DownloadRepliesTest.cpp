/* Downloads whose replies end anywhere, in portions of every kind, or announce what is not true. */
#include <cstdlib>

#include "hostile/HostileTransfer.h"

namespace {

constexpr auto ends = {WebReply::Break::Close, WebReply::Break::Reset};

class HostileDownload : public HostileTransfer {
protected:
    struct Expected {
        size_t size = 0;        // of the bytes that come
        int64_t announced = 0;  // -1: nothing
        size_t reads = 0;
        bool isReset = false;
    };

    void Try(WebReply reply, const std::string& whole, const Expected& expected) {
        tally->Add();
        Answer(std::move(reply));
        PutFile(target, "old");
        device.ForgetCalls();
        callbacks = 0;
        LimitedHeap heap(SIZE_MAX);
        const int32_t result = Fetch();
        const DWORD cause = GetLastError();
        EXPECT_LT(heap.Peak(), 1000u) << "no byte of the file is kept in memory";
        EXPECT_EQ(0u, heap.Used());
        EXPECT_EQ(expected.isReset ? 0 : 1, result);
        EXPECT_EQ(CauseOf(expected), cause);
        EXPECT_EQ(expected.announced, progress.totalBytes);
        EXPECT_EQ(expected.reads - (expected.isReset ? 1 : 0), callbacks);
        ExpectClosed(expected.reads);
        if (expected.isReset) return ExpectNeitherFile();
        EXPECT_EQ(whole.substr(0, expected.size), TakeFile(target));
        EXPECT_FALSE(device.Exists(temporary));
        EXPECT_EQ(static_cast<int64_t>(expected.size), progress.bytesReceived);
    }

    void TryCut(const std::string& whole, size_t size, WebReply::Break breaks, const Portions& portions) {
        Expected expected{size, static_cast<int64_t>(whole.size()), ReadsToEnd(size, breaks, portions)};
        expected.isReset = breaks == WebReply::Break::Reset;
        Try(Cut(whole, size, breaks, portions), whole, expected);
    }

    static DWORD CauseOf(const Expected& expected) {
        if (expected.isReset) return 10054;
        return static_cast<int64_t>(expected.size) < expected.announced ? LM_ERROR_REPLY_ENDED : 0U;
    }
};

/* What a Content-Length says: the number at its beginning, and -1 when there is none or the text is longer
 * than 14 units. */
int64_t LengthIn(const std::string& text) {
    char* end = nullptr;
    const int64_t length = std::strtoll(text.c_str(), &end, 10);
    return text.size() > 14 || end == text.c_str() ? -1 : length;
}

}  // namespace

TEST_F(HostileDownload, EndsOrIsResetAtEveryByteInEveryPortion) {
    tally.emplace("download that ends or is reset");
    const std::string whole = Content(100);
    const std::vector<Portions> all = SmallPortions(whole.size());
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        for (const auto breaks : ends) {
            for (const Portions& portions : all)
                TryCut(whole, size, breaks, portions);
        }
    }
}

TEST_F(HostileDownload, EndsOrIsResetAnywhereInSeveralReads) {
    tally.emplace(
        "download of several reads that ends or is reset, near the reads' ends and at each 37th byte");
    const std::string whole = Content(2 * chunk + 8);
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        // Each writes a file. What happens between the reads' ends, the shorter download has shown.
        const size_t inChunk = size % chunk;
        if (inChunk > 8 && inChunk < chunk - 8 && size % 37 != 0) continue;
        SCOPED_TRACE(size);
        for (const auto breaks : ends)
            TryCut(whole, size, breaks, {});
    }
}

TEST_F(HostileDownload, AnnouncesAnyLength) {
    tally.emplace("download that announces another length");
    const std::string whole = Content(100);
    for (const char* text : {"-2147483649",
                             "-1",
                             "0",
                             "1",
                             "99",
                             "100",
                             "101",
                             "2147483646",
                             "2147483647",
                             "2147483648",
                             "4294967296",
                             "99999999999998",
                             "99999999999999",
                             "100000000000000",
                             "9223372036854775807",
                             "9223372036854775808",
                             "99999999999999999999",
                             "",
                             "x",
                             "x100",
                             "100x",
                             " 100",
                             "+100",
                             "0x64",
                             "1 00",
                             "-"}) {
        SCOPED_TRACE(text);
        for (const size_t size : {size_t{0}, size_t{1}, size_t{99}, whole.size()}) {
            for (const Portions& portions : SmallPortions(whole.size())) {
                WebReply reply = Cut(whole, size, WebReply::Break::Close, portions);
                const std::string value = text;
                reply.headers = {{u"Content-Length", std::u16string(value.begin(), value.end())}};
                Try(reply, whole, {size, LengthIn(text), ReadsToEnd(size, WebReply::Break::Close, portions)});
            }
        }
    }
}

TEST_F(HostileDownload, AnnouncesNothing) {
    tally.emplace("download that announces no length");
    const std::string whole = Content(100);
    for (size_t size = 0; size <= whole.size(); ++size) {
        WebReply reply = Cut(whole, size, WebReply::Break::Close, {3});
        reply.sendsContentLength = false;
        Try(reply, whole, {size, -1, ReadsToEnd(size, WebReply::Break::Close, {3})});
    }
}

TEST_F(HostileDownload, IsAcceptedOrRefusedByItsStatus) {
    tally.emplace("download with every HTTP status");
    const std::string whole = Content(100);
    for (DWORD status = 0; status < 700 && !HasFailure(); ++status) {
        SCOPED_TRACE(status);
        WebReply reply = WebReply::WithBody(whole);
        reply.status = status;
        if (status < 300) {
            Try(reply, whole, {whole.size(), status == 0 ? -1 : 100, 2});
            continue;
        }
        tally->Add();
        Answer(std::move(reply));
        PutFile(target, "old");
        device.ForgetCalls();
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ(0x21000000 + status, GetLastError());
        EXPECT_EQ("old", TakeFile(target));
        ExpectClosed(0);
    }
}

TEST_F(HostileDownload, DoesNotEndBeforeTheStorageIsFull) {
    tally.emplace("download that does not end");
    for (const size_t room :
         {size_t{0}, size_t{1}, size_t{chunk - 1}, size_t{chunk}, size_t{chunk + 1}, size_t{1000000}}) {
        SCOPED_TRACE(room);
        tally->Add();
        WebReply reply;
        reply.produce = [](char* buffer, size_t most) {
            std::fill_n(buffer, most, 'x');
            return most;
        };
        Answer(reply);
        device.ForgetCalls();
        device.SetFreeStorage(room);
        EXPECT_EQ(0, Fetch());
        EXPECT_EQ(DWORD{ERROR_DISK_FULL}, GetLastError());
        ExpectNeitherFile();
        ExpectClosed(room / chunk + 1);
        device.SetFreeStorage(std::nullopt);
    }
}
