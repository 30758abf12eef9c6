#include <gmock/gmock.h>

#include "MadeUpMaps.h"
#include "MapCatalogue.h"
#include "SampleMaps.h"
#include "TemporaryFolder.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MapCatalogueSearch : public testing::Test {
protected:
    /* The names of the maps of a new catalogue that meet the boxes. */
    [[nodiscard]] std::vector<std::string> Found(std::vector<MapRecord> maps,
                                                 const std::vector<Box>& boxes) const {
        const MapCatalogue catalogue(folder.Path(), SourceOf(std::move(maps)));
        return NamesOf(catalogue.Search(boxes));
    }

    /* Whether a map meets a box, asked in both directions. */
    [[nodiscard]] static bool Meet(const Box& one, const Box& other) {
        const bool there = IsFound(one, other);
        EXPECT_EQ(IsFound(other, one), there);
        return there;
    }

    TemporaryFolder folder;

private:
    static bool IsFound(const Box& map, const Box& box) {
        const TemporaryFolder other;
        return !MapCatalogue(other.Path(), SourceOf({SampleMap("map", map)}))
                    .Search(std::vector{box})
                    .empty();
    }
};

constexpr Box middle{1000, 2000, 3000, 4000};

}  // namespace

TEST_F(MapCatalogueSearch, BoxInsideAroundAndOverlappingMeets) {
    EXPECT_TRUE(Meet(middle, {1500, 2500, 2500, 3500}));
    EXPECT_TRUE(Meet(middle, {0, 0, 9000, 9000}));
    EXPECT_TRUE(Meet(middle, {2999, 3999, 9000, 9000}));
    EXPECT_TRUE(Meet(middle, middle));
}

TEST_F(MapCatalogueSearch, BoxesThatOnlyCrossMeet) {
    EXPECT_TRUE(Meet(middle, {0, 2900, 9000, 3100}));
}

TEST_F(MapCatalogueSearch, TouchingEdgesMeet) {
    EXPECT_TRUE(Meet(middle, {3000, 2500, 5000, 3500}));
    EXPECT_TRUE(Meet(middle, {0, 2500, 1000, 3500}));
    EXPECT_TRUE(Meet(middle, {1500, 4000, 2500, 5000}));
    EXPECT_TRUE(Meet(middle, {1500, 0, 2500, 2000}));
}

TEST_F(MapCatalogueSearch, TouchingCornersMeet) {
    EXPECT_TRUE(Meet(middle, {3000, 4000, 3000, 4000}));
    EXPECT_TRUE(Meet(middle, {0, 0, 1000, 2000}));
}

TEST_F(MapCatalogueSearch, OneUnitApartDoesNotMeet) {
    EXPECT_FALSE(Meet(middle, {3001, 2500, 5000, 3500}));
    EXPECT_FALSE(Meet(middle, {0, 2500, 999, 3500}));
    EXPECT_FALSE(Meet(middle, {1500, 4001, 2500, 5000}));
    EXPECT_FALSE(Meet(middle, {1500, 0, 2500, 1999}));
}

TEST_F(MapCatalogueSearch, BoxAcrossTheAntimeridianMeetsBothSides) {
    const Box across{0, 17000000, 10, -17000000};
    EXPECT_TRUE(Meet(across, {0, 17500000, 10, 17600000}));
    EXPECT_TRUE(Meet(across, {0, -17600000, 10, -17500000}));
    EXPECT_TRUE(Meet(across, {0, -1, 10, 17000000}));
    EXPECT_TRUE(Meet(across, {0, -17000000, 10, 1}));
    EXPECT_TRUE(Meet(across, {0, -18000000, 10, 18000000}));
    EXPECT_FALSE(Meet(across, {0, -16999999, 10, 16999999}));
    EXPECT_FALSE(Meet(across, {11, 17500000, 20, 17600000}));
}

TEST_F(MapCatalogueSearch, BoxesThatBothCrossTheAntimeridianMeet) {
    EXPECT_TRUE(Meet({0, 17900000, 10, -17900000}, {5, 16000000, 6, -16000000}));
    EXPECT_TRUE(Meet({0, 17900000, 10, -17900000}, {5, 17999999, 6, -10000000}));
    EXPECT_FALSE(Meet({0, 17900000, 10, -17900000}, {11, 17900000, 12, -17900000}));
}

TEST_F(MapCatalogueSearch, BoxesThatTouchAtTheAntimeridianMeet) {
    EXPECT_TRUE(Meet({0, 17000000, 10, 18000000}, {0, -18000000, 10, -17000000}));
    EXPECT_TRUE(Meet({0, 17000000, 10, 18000000}, {0, 17900000, 10, -17900000}));
    EXPECT_FALSE(Meet({0, 17000000, 10, 18000000}, {0, -17999999, 10, -17000000}));
}

TEST_F(MapCatalogueSearch, EveryMapIsFoundWithoutBoxes) {
    EXPECT_THAT(Found({SampleMap("c", {}), SampleMap("a", middle), SampleMap("b", {})}, {}),
                ElementsAre("a", "b", "c"));
}

TEST_F(MapCatalogueSearch, MapThatMeetsSeveralBoxesIsFoundOnce) {
    EXPECT_THAT(Found({SampleMap("a", middle), SampleMap("b", {9000, 9000, 9000, 9000})},
                      {middle, {0, 0, 8000, 8000}, middle, {3000, 4000, 5000, 5000}}),
                ElementsAre("a"));
}

TEST_F(MapCatalogueSearch, MapIsFoundThroughAnyOfTheBoxes) {
    EXPECT_THAT(
        Found({SampleMap("a", {0, 0, 1, 1}), SampleMap("b", {5, 5, 6, 6}), SampleMap("c", {8, 8, 9, 9})},
              {{9, 9, 9, 9}, {0, 0, 0, 0}}),
        ElementsAre("a", "c"));
}

TEST_F(MapCatalogueSearch, NothingIsFoundInAnEmptyCatalogue) {
    EXPECT_THAT(Found({}, {}), IsEmpty());
}

TEST_F(MapCatalogueSearch, BoxesOfOneSearchDoNotStayForTheNext) {
    const MapCatalogue catalogue(folder.Path(),
                                 SourceOf({SampleMap("a", {0, 0, 1, 1}), SampleMap("b", {5, 5, 6, 6})}));
    EXPECT_THAT(NamesOf(catalogue.Search(std::vector<Box>{{0, 0, 0, 0}})), ElementsAre("a"));
    EXPECT_THAT(NamesOf(catalogue.Search(std::vector<Box>{{5, 5, 5, 5}})), ElementsAre("b"));
}

TEST_F(MapCatalogueSearch, NamesAreOrderedByCodePoint) {
    EXPECT_THAT(Found({SampleMap("\xC3\x8E", {}), SampleMap("b", {}), SampleMap("Z", {}), SampleMap("a", {}),
                       SampleMap("aa", {})},
                      {{0, 0, 0, 0}}),
                ElementsAre("Z", "a", "aa", "b", "\xC3\x8E"));
}

TEST_F(MapCatalogueSearch, MapsOfOneNameAreOrderedByPath) {
    const MapCatalogue catalogue(folder.Path(), SourceOf({{"a", 1, "/maps/2.map", "second", {}},
                                                          {"a", 1, "/maps/1.map", "first", {}}}));
    const std::vector<MapRecord> maps = catalogue.Search({});
    ASSERT_EQ(maps.size(), 2u);
    EXPECT_EQ(maps[0].description, "first");
}

TEST_F(MapCatalogueSearch, FirstGivesNoMoreThanAskedFor) {
    const MapCatalogue catalogue(folder.Path(), MadeUpMaps(10));
    EXPECT_THAT(NamesOf(catalogue.First(2)), ElementsAre("Made-up map 0000001", "Made-up map 0000002"));
    EXPECT_EQ(catalogue.First(11).size(), 10u);
    EXPECT_THAT(catalogue.First(0), IsEmpty());
}
