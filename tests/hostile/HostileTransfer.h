/* Downloads and reads of parts whose replies come as a test wants it. What is to be expected of them follows
 * from the number of bytes that come, and from what happens behind these. */
#pragma once

#include <optional>

#include "hostile/Portions.h"
#include "hostile/Tally.h"
#include "machine/LimitedHeap.h"
#include "transport/TransferFixture.h"

class HostileTransfer : public Transfer {
protected:
    /* The first `size` bytes of `whole`; a reset behind them, or nothing more. */
    static WebReply Cut(const std::string& whole, size_t size, WebReply::Break breaks,
                        const Portions& portions) {
        WebReply reply = WebReply::WithBody(whole);
        reply.breaks = breaks;
        reply.breakAt = size;
        reply.chunks = portions;
        return reply;
    }

    /* How many reads it takes to be told of the end of `size` bytes. A reset comes with the last of them,
     * unless the reads before have brought these exactly. */
    static size_t ReadsToEnd(size_t size, WebReply::Break breaks, const Portions& portions) {
        const size_t reads = ReadsFor(size, portions, chunk);
        if (breaks != WebReply::Break::Reset) return reads + 1;
        size_t whole = 0;
        for (size_t brought = 0;; ++whole) {
            const size_t portion = portions.empty() ? chunk : portions[std::min(whole, portions.size() - 1)];
            brought += std::min<size_t>(portion, chunk);
            if (brought > size) return whole + 1;
        }
    }

    void ExpectClosed(size_t reads) {
        EXPECT_EQ(reads, device.CountCalls("InternetReadFile"));
        EXPECT_EQ(2u, device.CountCalls("InternetCloseHandle")) << "request and connection";
    }

    std::optional<Tally> tally;
};
