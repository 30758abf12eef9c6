/* What a scripted server sends through. */
#include "helpers/LocalTcp.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

namespace {

/* Closes with bytes unread, which resets the connection. */
void ReceiveSomeAndGo(uint16_t port) {
    const Socket client = ConnectedSocket(port);
    EXPECT_TRUE(ReceiveSome(client.Get()).has_value());
}

}  // namespace

// Sends that wait for room were stuck in one of the first 10 rounds.
TEST(LocalTcp, SendAllEndsWhenTheOtherSideResetsInTheMiddle) {
    const SocketLibrary library;
    const Socket listening = BoundSocket();
    ASSERT_EQ(0, listen(listening.Get(), SOMAXCONN));
    const std::string bytes(4U << 20, 'x');
    for (int round = 1; round <= 200; ++round) {
        auto client = std::async(std::launch::async, ReceiveSomeAndGo, PortOf(listening.Get()));
        const Socket server(accept(listening.Get(), nullptr, nullptr));
        ASSERT_TRUE(server);
        auto sent = std::async(std::launch::async, SendAll, server.Get(), std::string_view(bytes));
        const bool hasEnded = sent.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
        // The future's end waits for it. To close the socket would end no such wait.
        if (!hasEnded) CancelIoEx(reinterpret_cast<HANDLE>(server.Get()), nullptr);
        ASSERT_TRUE(hasEnded) << "in round " << round;
    }
}
