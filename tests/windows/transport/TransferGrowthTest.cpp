/* Many transfers in one process. */
#include "transport/TransferTest.h"

#include <psapi.h>

#include <stdexcept>

#include "helpers/OpenHandles.h"

namespace {

class TransferGrowth : public TransferTest {
protected:
    /* The bytes of memory that belong to this process alone. */
    static size_t PrivateBytes() {
        PROCESS_MEMORY_COUNTERS counters{};
        counters.cb = sizeof counters;
        if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
            throw std::runtime_error("memory");
        return counters.PagefileUsage;
    }

    /* Does `transfer` 200 times and expects as many handles and bytes as before. What is allowed to come up
     * is far less than one handle or one buffer for each: what the system opens of its own, and what the heap
     * takes. */
    void ExpectNoGrowth(const std::function<void()>& transfer) {
        for (int i = 0; i < 50; ++i)
            transfer();
        server.TakeRequests();
        const size_t handles = OpenHandles();
        const uintptr_t internetHandle = NextInternetHandle();
        const size_t bytes = PrivateBytes();
        for (int i = 0; i < 200; ++i)
            transfer();
        EXPECT_EQ(200U, server.TakeRequests().size());
        EXPECT_GT(handles + 50, OpenHandles());
        EXPECT_EQ(internetHandle, NextInternetHandle());
        EXPECT_GE(bytes + (512U << 10), PrivateBytes());
    }
};

}  // namespace

TEST_F(TransferGrowth, IsMeasuredByWhatSeesHandlesAndAMegabyte) {
    // More than may come up by itself.
    constexpr size_t count = 100;
    const size_t handles = OpenHandles();
    std::vector<HANDLE> events(count);
    for (HANDLE& event : events)
        event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    EXPECT_LE(handles + count / 2, OpenHandles());
    for (const HANDLE event : events)
        CloseHandle(event);
    const size_t bytes = PrivateBytes();
    const std::vector<char> megabyte(1U << 20, 'x');
    EXPECT_LE(bytes + (1U << 20), PrivateBytes());
}

TEST_F(TransferGrowth, Of200DownloadsIsNone) {
    server.Answer(Content(20000));
    ExpectNoGrowth([this] { EXPECT_EQ(1, DownloadOverOldFile()); });
}

TEST_F(TransferGrowth, Of200CancelledDownloadsIsNone) {
    server.Answer(Content(20000));
    atCallback = [this] { return callbacks == 3 ? 0 : 1; };
    ExpectNoGrowth([this] { EXPECT_EQ(0, DownloadOverOldFile()); });
}

TEST_F(TransferGrowth, Of200RefusedDownloadsIsNone) {
    AnswerRaw(Head("404 Not Found", LengthField(3)) + "abc");
    ExpectNoGrowth([this] { EXPECT_EQ(0, DownloadOverOldFile()); });
}

TEST_F(TransferGrowth, Of200RangedReadsIsNone) {
    server.Answer(Content(20000));
    ExpectNoGrowth([this] {
        char buffer[10000];
        EXPECT_EQ(10000, library.readRange(host, urlPath, 0, 10000, buffer, Callback, this));
        EXPECT_EQ(-1, library.readRange(host, nullptr, 0, 10000, buffer, Callback, this));
    });
}
