/* Searches whose results other threads read and close, as LMOnline.h allows it. */
#include "Platform.h"

#include <thread>
#include <vector>

#include "mapshop/ShopTest.h"
#include "support/Causes.h"

namespace {

class SearchThreads : public ShopTest {
protected:
    static constexpr int32_t mapCount = 300;

    void ReplyWithMaps() {
        MapShopReply reply;
        reply.Int32(0).Int32(mapCount);
        for (int32_t number = 0; number < mapCount; ++number)
            reply.Map(L"map", number, L"path", L"text");
        Reply(reply.Int32(7));
    }

    /* Reads all results of the search and closes it; whether they were right, and so was the last error of
     * this thread. */
    bool IsReadWhole(MapShopSearch* search) const {
        bool isRight = true;
        MapShopResult map{};
        for (int32_t number = 0; number < mapCount; ++number) {
            isRight = isRight && library.mapShopGetNext(search, &map) == 1 && GetLastError() == 0 &&
                      map.number == number;
        }
        isRight = isRight && library.mapShopGetNext(search, &map) == 0 && GetLastError() == 259;
        return library.mapShopClose(search) == 7 && isRight;
    }
};

}  // namespace

TEST_F(SearchThreads, OthersReadAndCloseWhatOneSearches) {
    ReplyWithMaps();
    bool isRight[8] = {};
    {
        std::vector<std::jthread> readers;
        for (bool& answer : isRight) {
            MapShopSearch* const search = library.mapShopSearch(nullptr, 0);
            EXPECT_EQ(0U, GetLastError());
            readers.emplace_back([this, search, &answer] { answer = IsReadWhole(search); });
        }
    }
    for (const bool answer : isRight)
        EXPECT_TRUE(answer);
}
