#include "MadeUpMaps.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

TEST(MadeUpMaps, MapIsTheSameEveryTime) {
    const MapRecord map = MadeUpMaps(25).at(6);
    EXPECT_EQ(map.name, "Made-up map 0000007");
    EXPECT_EQ(map.path, "/maps/made-up/0000007.map");
    EXPECT_EQ(map.description, "Map 7 of 25, made up for large searches.");
    // 100 + 7 * 7919
    EXPECT_EQ(map.kilobytes, 55533);
    // Cell 6 * 611953 modulo 1000000: row 671, column 718.
    EXPECT_EQ(map.box, (Box{-9000000 + 671 * 18000, -18000000 + 718 * 36000, -9000000 + 672 * 18000,
                            -18000000 + 719 * 36000}));
}

TEST(MadeUpMaps, LastOfAMillionMapsIsOnTheGlobe) {
    const MapRecord map = MadeUpMaps(mostMadeUpMaps).at(mostMadeUpMaps - 1);
    EXPECT_EQ(map.name, "Made-up map 1000000");
    EXPECT_TRUE(IsOnGlobe(map.box));
}

TEST(MadeUpMaps, ContentsSayHowManyThereAre) {
    EXPECT_EQ(MadeUpMaps(0).contents, "0 made-up maps");
    EXPECT_EQ(MadeUpMaps(10000).contents, "10000 made-up maps");
    EXPECT_EQ(MadeUpMaps(10000).count, 10000);
}

TEST(MadeUpMaps, EveryMapIsOnTheGlobeInACellOfItsOwn) {
    const MapSource source = MadeUpMaps(50000);
    std::set<std::pair<int32_t, int32_t>> corners;
    for (int32_t position = 0; position < source.count; ++position) {
        const MapRecord map = source.at(position);
        ASSERT_TRUE(IsOnGlobe(map.box)) << map.name;
        ASSERT_LT(map.box.west, map.box.east) << map.name;
        ASSERT_GT(map.kilobytes, 0) << map.name;
        corners.emplace(map.box.south, map.box.west);
    }
    EXPECT_EQ(corners.size(), 50000u);
}
