/* Searches that reach nobody. */
#include <gtest/gtest.h>

#include "LocalListener.h"
#include "ShippedLibrary.h"
#include "WebProxy.h"

namespace {

void ExpectNothing(const SearchOutcome& outcome) {
    EXPECT_TRUE(outcome.gotHandle);
    EXPECT_EQ(0U, outcome.results.size());
    EXPECT_EQ(0, outcome.finalValue);
}

}  // namespace

TEST(Unreachable, UnknownHostHasNoResults) {
    const ShippedLibrary library;
    ExpectNothing(library.Search());
}

TEST(Unreachable, RefusedConnectionHasNoResults) {
    // Bound but not listening: nobody else can take the port, and nobody answers.
    const SocketLibrary sockets;
    const Socket closed = BoundSocket();
    const WebProxy nobody(PortOf(closed.Get()));
    const ShippedLibrary library;
    ExpectNothing(library.Search());
}

TEST(Unreachable, NullHandleHasNoResultsAndNoFinalValue) {
    const ShippedLibrary library;
    MapShopResult record{};
    record.number = 5;
    EXPECT_EQ(0, library.mapShopGetNext(nullptr, &record));
    EXPECT_EQ(5, record.number);
    EXPECT_EQ(0, library.mapShopClose(nullptr));
}
