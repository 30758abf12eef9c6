/* Reads of a part whose replies end anywhere, in portions of every kind; over HTTPS, too, which no export
 * asks for. */
#include "hostile/HostileTransfer.h"
#include "transport/WebDownload.h"

namespace {

constexpr auto ends = {WebReply::Break::Close, WebReply::Break::Reset};
constexpr char untouched = '\x5A';

class HostileRange : public HostileTransfer {
protected:
    /* Asks for `length` bytes of a reply that brings `size`. */
    void Try(size_t size, int32_t length, WebReply::Break breaks, const Portions& portions) {
        Arrange(Cut(whole, size, breaks, portions), 80);
        LimitedHeap heap(SIZE_MAX);
        const int32_t result = LMReadWebFileRange(host, path, 7, length, buffer.data(), Callback, this);
        const DWORD cause = GetLastError();
        EXPECT_LT(heap.Peak(), 1000u);
        EXPECT_EQ(0u, heap.Used());
        Expect(size, length, breaks, portions, result, cause);
        ExpectClosed(device.CountCalls("InternetReadFile"));
    }

    void TrySecure(size_t size, int32_t length, WebReply::Break breaks, const Portions& portions) {
        Arrange(Cut(whole, size, breaks, portions), 443);
        int32_t result = 0;
        DWORD cause = 0;
        {
            WebConnection connection(host, true, true);
            connection.progressCallback = Callback;
            connection.callbackContext = this;
            result = ReadWebFileRange(connection, path, 7, length, buffer.data());
            cause = connection.failure.cause;
        }
        Expect(size, length, breaks, portions, result, cause);
        ExpectClosed(device.CountCalls("InternetReadFile"));
        EXPECT_TRUE(device.Requests().back().secure);
    }

    static constexpr const WCHAR* path = TEXT("/maps/file.map");
    std::string whole;
    std::string buffer;
    decltype(WebReply::headers) headers;

private:
    void Arrange(WebReply reply, INTERNET_PORT port) {
        tally->Add();
        reply.status = 206;
        reply.headers = headers;
        device.AddHost(host, port, std::move(reply));
        device.ForgetCalls();
        callbacks = 0;
        buffer.assign(whole.size() + 10, untouched);
    }

    void Expect(size_t size, int32_t length, WebReply::Break breaks, const Portions& portions, int32_t result,
                DWORD cause) {
        const size_t wanted = length > 0 ? static_cast<size_t>(length) : 0;
        const size_t came = std::min(wanted, size);
        EXPECT_EQ(std::string_view(whole).substr(0, came), std::string_view(buffer).substr(0, came));
        EXPECT_EQ(std::string::npos, buffer.find_first_not_of(untouched, came)) << "nothing behind";
        const bool isWhole = wanted <= size;
        EXPECT_EQ(isWhole && length > 0 ? length : 0, result);
        const DWORD atEnd = breaks == WebReply::Break::Reset ? 10054U : LM_ERROR_REPLY_ENDED;
        EXPECT_EQ(length < 0 ? LM_ERROR_BAD_ARGUMENT : isWhole ? 0U : atEnd, cause);
        const size_t reads = isWhole ? ReadsFor(wanted, portions, chunk) : ReadsToEnd(size, breaks, portions);
        EXPECT_EQ(reads, device.CountCalls("InternetReadFile"));
        EXPECT_EQ(reads - (isWhole ? 0 : 1), callbacks);
    }
};

}  // namespace

TEST_F(HostileRange, EndsOrIsResetAtEveryByteInEveryPortion) {
    tally.emplace("part of a file that ends or is reset");
    whole = Content(64);
    const std::vector<Portions> all = SmallPortions(whole.size());
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        for (const int32_t length : {INT32_MIN, -1, 0, 1, 2, 8, 31, 62, 63, 64, 65, INT32_MAX}) {
            for (const auto breaks : ends) {
                for (const Portions& portions : all)
                    Try(size, length, breaks, portions);
            }
        }
    }
}

TEST_F(HostileRange, EndsOrIsResetAtEveryByteOfHttpsInEveryPortion) {
    tally.emplace("part of a file over HTTPS that ends or is reset");
    whole = Content(64);
    const std::vector<Portions> all = SmallPortions(whole.size());
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        for (const int32_t length : {-1, 0, 1, 63, 64, 65, INT32_MAX}) {
            for (const auto breaks : ends) {
                for (const Portions& portions : all)
                    TrySecure(size, length, breaks, portions);
            }
        }
    }
}

TEST_F(HostileRange, EndsOrIsResetAtEveryByteOfSeveralReads) {
    tally.emplace("part of a file of several reads that ends or is reset");
    whole = Content(2 * chunk + 8);
    for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
        SCOPED_TRACE(size);
        const auto length = static_cast<int32_t>(whole.size());
        for (const auto breaks : ends) {
            Try(size, length, breaks, {});
            TrySecure(size, length, breaks, {});
        }
        Try(whole.size(), static_cast<int32_t>(size), WebReply::Break::Close, {});
    }
}

TEST_F(HostileRange, IsAcceptedOrRefusedByItsStatus) {
    tally.emplace("part of a file with every HTTP status");
    whole = Content(64);
    for (DWORD status = 0; status < 700; ++status) {
        SCOPED_TRACE(status);
        tally->Add();
        WebReply reply = WebReply::WithBody(whole);
        reply.status = status;
        Answer(reply);
        buffer.assign(64, untouched);
        const bool isAccepted = status < 300;
        EXPECT_EQ(isAccepted ? 64 : -1,
                  LMReadWebFileRange(host, path, 0, 64, buffer.data(), nullptr, nullptr));
        EXPECT_EQ(isAccepted ? 0 : 0x21000000 + status, GetLastError());
        EXPECT_EQ(isAccepted ? whole : std::string(64, untouched), buffer);
    }
}

TEST_F(HostileRange, AnnouncesAnyLengthAndPlace) {
    tally.emplace("part of a file that announces another length or place");
    whole = Content(64);
    const std::pair<std::u16string, std::u16string> announced[] = {
        {u"Content-Length", u"-1"},
        {u"Content-Length", u"0"},
        {u"Content-Length", u"1"},
        {u"Content-Length", u"63"},
        {u"Content-Length", u"65"},
        {u"Content-Length", u"2147483647"},
        {u"Content-Length", u"99999999999999999999"},
        {u"Content-Length", u"x"},
        {u"Content-Range", u"bytes 0-63/64"},
        {u"Content-Range", u"bytes 71-7/0"},
        {u"Content-Range", u"bytes */*"},
        {u"Content-Range", u"bytes -1--1/9223372036854775808"},
    };
    for (const auto& header : announced) {
        headers = {header};
        for (const size_t size : {size_t{0}, size_t{1}, size_t{63}, whole.size()}) {
            SCOPED_TRACE(size);
            for (const int32_t length : {1, 63, 64, 65, INT32_MAX})
                Try(size, length, WebReply::Break::Close, {7});
        }
    }
}

TEST_F(HostileRange, SendsMoreThanIsAskedFor) {
    tally.emplace("part of a file that does not end");
    whole = Content(100000);
    for (const int32_t length : {1, 4095, 4096, 4097, 8192, 99999}) {
        for (const Portions& portions : {Portions{}, {1}, {8}, {5000}})
            Try(whole.size(), length, WebReply::Break::Close, portions);
    }
}
