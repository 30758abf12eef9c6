#include "Box.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(Box, WholeGlobeIsOnTheGlobe) {
    EXPECT_TRUE(IsOnGlobe({-9000000, -18000000, 9000000, 18000000}));
}

TEST(Box, SinglePointIsOnTheGlobe) {
    EXPECT_TRUE(IsOnGlobe({5, 6, 5, 6}));
}

TEST(Box, WestOfEastIsNoConditionAsTheBoxMayCrossTheAntimeridian) {
    EXPECT_TRUE(IsOnGlobe({0, 17000000, 10, -17000000}));
}

TEST(Box, SouthNorthOfNorthIsNotOnTheGlobe) {
    EXPECT_FALSE(IsOnGlobe({11, 0, 10, 0}));
}

TEST(Box, EdgeOneUnitOffIsNotOnTheGlobe) {
    EXPECT_FALSE(IsOnGlobe({-9000001, 0, 0, 0}));
    EXPECT_FALSE(IsOnGlobe({0, -18000001, 0, 0}));
    EXPECT_FALSE(IsOnGlobe({0, 0, 9000001, 0}));
    EXPECT_FALSE(IsOnGlobe({0, 0, 0, 18000001}));
    EXPECT_FALSE(IsOnGlobe({0, 18000001, 0, 0}));
    EXPECT_FALSE(IsOnGlobe({0, 0, 0, -18000001}));
}

TEST(Box, ExtremesOfTheIntegerAreNotOnTheGlobe) {
    EXPECT_FALSE(IsOnGlobe({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}));
}

TEST(Box, PlainBoxIsItsOwnOnlyPiece) {
    const Box box{1, 2, 3, 4};
    EXPECT_THAT(PiecesOf(box), ElementsAre(box));
}

TEST(Box, BoxAcrossTheAntimeridianHasAPieceOnEachSide) {
    EXPECT_THAT(PiecesOf({1, 17000000, 3, -17000000}),
                ElementsAre(Box{1, 17000000, 3, 18000000}, Box{1, -18000000, 3, -17000000}));
}

TEST(Box, BoxThatEndsAtTheAntimeridianHasItsOtherNameToo) {
    EXPECT_THAT(PiecesOf({1, 17000000, 3, 18000000}),
                ElementsAre(Box{1, 17000000, 3, 18000000}, Box{1, -18000000, 3, -18000000}));
    EXPECT_THAT(PiecesOf({1, -18000000, 3, -17000000}),
                ElementsAre(Box{1, -18000000, 3, -17000000}, Box{1, 18000000, 3, 18000000}));
}

TEST(Box, BoxAroundTheGlobeIsItsOwnOnlyPiece) {
    const Box box{1, -18000000, 3, 18000000};
    EXPECT_THAT(PiecesOf(box), ElementsAre(box));
}
