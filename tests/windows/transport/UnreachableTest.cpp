/* Searches and transfers that reach nobody. */
#include <gtest/gtest.h>

#include "helpers/ClosedPort.h"
#include "helpers/LocalFiles.h"
#include "helpers/ScratchFolder.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/WebProxy.h"

namespace {

void ExpectNothing(const SearchOutcome& outcome) {
    EXPECT_TRUE(outcome.gotHandle);
    EXPECT_EQ(0U, outcome.results.size());
    EXPECT_EQ(0, outcome.finalValue);
}

/* Expects a download to fail with the older file unchanged, and a ranged read to give -1. */
void ExpectNoTransfer(const ShippedLibrary& library) {
    const ScratchFolder folder;
    const std::wstring target = folder.Path() + L"\\file.map";
    PutFile(target, "old");
    DownloadProgress progress{-7, -7};
    EXPECT_EQ(
        0, library.downloadWithProgress(L"maps.example", L"/f", target.c_str(), nullptr, nullptr, &progress));
    EXPECT_EQ(0, library.download(L"maps.example", L"/f", target.c_str(), nullptr, nullptr));
    EXPECT_EQ("old", ContentOf(target));
    EXPECT_EQ(1U, folder.Names().size());
    EXPECT_EQ(-7, progress.bytesReceived);
    EXPECT_EQ(-7, progress.totalBytes);
    char buffer[] = "....";
    EXPECT_EQ(-1, library.readRange(L"maps.example", L"/f", 0, 4, buffer, nullptr, nullptr));
    EXPECT_EQ(-1, library.readRange(L"maps.example", L"/f", 0, 0, buffer, nullptr, nullptr));
    EXPECT_STREQ("....", buffer);
}

}  // namespace

TEST(Unreachable, UnknownHostBringsNothing) {
    const ShippedLibrary library;
    ExpectNothing(library.Search());
    ExpectNoTransfer(library);
}

TEST(Unreachable, RefusedConnectionBringsNothing) {
    const ClosedPort closed;
    const WebProxy nobody(closed.Number());
    const ShippedLibrary library;
    ExpectNothing(library.Search());
    ExpectNoTransfer(library);
}

TEST(Unreachable, NullHandleHasNoResultsAndNoFinalValue) {
    const ShippedLibrary library;
    MapShopResult record{};
    record.number = 5;
    EXPECT_EQ(0, library.mapShopGetNext(nullptr, &record));
    EXPECT_EQ(5, record.number);
    EXPECT_EQ(0, library.mapShopClose(nullptr));
}
