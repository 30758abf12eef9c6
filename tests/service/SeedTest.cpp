#include "Seed.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Utf16.h"

namespace {

std::vector<MapRecord> Regions() {
    const MapSource source = RegionsOfTheWorld();
    std::vector<MapRecord> maps;
    maps.reserve(static_cast<size_t>(source.count));
    for (int32_t position = 0; position < source.count; ++position)
        maps.push_back(source.at(position));
    return maps;
}

MapRecord RegionAt(const std::string& path) {
    for (const MapRecord& map : Regions()) {
        if (map.path == path) return map;
    }
    ADD_FAILURE() << "no map " << path;
    return {};
}

bool Holds(const Box& box, double latitude, double longitude) {
    const double degrees = unitsPerDegree;
    const bool isBetween = box.south <= latitude * degrees && latitude * degrees <= box.north;
    const bool isEastOfWest = box.west <= longitude * degrees;
    const bool isWestOfEast = longitude * degrees <= box.east;
    return isBetween && (box.west <= box.east ? isEastOfWest && isWestOfEast : isEastOfWest || isWestOfEast);
}

}  // namespace

TEST(Seed, HasAtLeast24Regions) {
    EXPECT_GE(Regions().size(), 24u);
}

TEST(Seed, BoxesAreOnTheGlobeAndHaveAnArea) {
    for (const MapRecord& map : Regions()) {
        EXPECT_TRUE(IsOnGlobe(map.box)) << map.name;
        EXPECT_LT(map.box.south, map.box.north) << map.name;
        EXPECT_NE(map.box.west, map.box.east) << map.name;
    }
}

TEST(Seed, NamesAndPathsAreUnique) {
    std::set<std::string> names;
    std::set<std::string> paths;
    for (const MapRecord& map : Regions()) {
        EXPECT_TRUE(names.insert(map.name).second) << map.name;
        EXPECT_TRUE(paths.insert(map.path).second) << map.path;
    }
}

TEST(Seed, PathsArePlainFileNamesUnderMaps) {
    for (const MapRecord& map : Regions()) {
        ASSERT_TRUE(map.path.starts_with("/maps/") && map.path.ends_with(".map")) << map.path;
        const std::string name = map.path.substr(6, map.path.size() - 10);
        EXPECT_FALSE(name.empty());
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos) << map.path;
    }
}

TEST(Seed, TextsAreWellFormedAndFitTheApplicationsRecord) {
    for (const MapRecord& map : Regions()) {
        for (const auto& [text, capacity] :
             std::map<std::string, size_t>{{map.name, nameCapacity},
                                           {map.path, pathCapacity},
                                           {map.description, descriptionCapacity}}) {
            const std::u16string units = Utf16Of(text);
            EXPECT_FALSE(units.empty()) << map.path;
            EXPECT_LE(units.size(), capacity) << map.path;
            EXPECT_EQ(units.find(u'\uFFFD'), std::u16string::npos) << map.path;
        }
    }
}

TEST(Seed, SizesSuitAHandheldsStorageCard) {
    for (const MapRecord& map : Regions()) {
        EXPECT_GE(map.kilobytes, 0) << map.name;
        EXPECT_LE(map.kilobytes, 128 * 1024) << map.name;
    }
}

TEST(Seed, FilesAreOfMapsWhoseSizesTheyHave) {
    std::set<std::string> names;
    for (const MapFile& file : FilesOfTheWorld()) {
        EXPECT_TRUE(names.insert(file.name).second) << file.name;
        EXPECT_EQ(RegionAt("/maps/" + file.name).kilobytes, static_cast<int64_t>((file.size + 1023) / 1024))
            << file.name;
    }
    EXPECT_GE(names.size(), 5u);
}

TEST(Seed, FilesGoFromEmptyTo64Megabytes) {
    std::set<uint64_t> sizes;
    for (const MapFile& file : FilesOfTheWorld())
        sizes.insert(file.size);
    EXPECT_TRUE(sizes.contains(0));
    EXPECT_TRUE(sizes.contains(1));
    EXPECT_EQ(*sizes.rbegin(), 64u * 1024 * 1024);
}

TEST(Seed, BoxesHoldPlacesThatLieInTheRegionAndNoneFarOutside) {
    struct Place {
        const char* path;
        double latitude, longitude;
        bool isInside;
    };
    const Place places[] = {
        {"/maps/portugal.map", 38.722, -9.139, true},         // Lisbon
        {"/maps/portugal.map", 40.417, -3.704, false},        // Madrid
        {"/maps/portugal.map", 37.741, -25.675, false},       // Ponta Delgada
        {"/maps/azores.map", 37.741, -25.675, true},          // Ponta Delgada
        {"/maps/ile-de-france.map", 48.857, 2.352, true},     // Paris
        {"/maps/ile-de-france.map", 49.443, 1.099, false},    // Rouen
        {"/maps/bavaria.map", 48.137, 11.575, true},          // Munich
        {"/maps/scotland.map", 60.155, -1.145, true},         // Lerwick
        {"/maps/scotland.map", 54.597, -5.930, false},        // Belfast
        {"/maps/switzerland.map", 46.204, 6.143, true},       // Geneva
        {"/maps/egypt.map", 30.044, 31.236, true},            // Cairo
        {"/maps/kenya.map", -4.044, 39.668, true},            // Mombasa
        {"/maps/kenya.map", -6.793, 39.208, false},           // Dar es Salaam
        {"/maps/hokkaido.map", 43.062, 141.354, true},        // Sapporo
        {"/maps/hokkaido.map", 40.824, 140.740, false},       // Aomori
        {"/maps/java.map", -6.175, 106.827, true},            // Jakarta
        {"/maps/java.map", -8.650, 115.217, false},           // Denpasar
        {"/maps/california.map", 34.052, -118.244, true},     // Los Angeles
        {"/maps/california.map", 33.448, -112.074, false},    // Phoenix
        {"/maps/alaska.map", 61.218, -149.900, true},         // Anchorage
        {"/maps/alaska.map", 52.830, 173.170, true},          // Attu
        {"/maps/alaska.map", 55.000, 170.000, false},         // Bering Sea, west of Attu
        {"/maps/uruguay.map", -34.901, -56.165, true},        // Montevideo
        {"/maps/uruguay.map", -34.604, -58.500, false},       // Buenos Aires, west side
        {"/maps/galapagos.map", -0.743, -90.303, true},       // Puerto Ayora
        {"/maps/fiji.map", -18.142, 178.442, true},           // Suva
        {"/maps/fiji.map", -17.200, -178.950, true},          // Vanua Balavu
        {"/maps/fiji.map", -17.734, 168.322, false},          // Port Vila
        {"/maps/south-island.map", -43.532, 172.637, true},   // Christchurch
        {"/maps/south-island.map", -36.850, 174.764, false},  // Auckland
        {"/maps/tasmania.map", -42.882, 147.327, true},       // Hobart
        {"/maps/tasmania.map", -37.814, 144.963, false},      // Melbourne
    };
    for (const Place& place : places) {
        EXPECT_EQ(Holds(RegionAt(place.path).box, place.latitude, place.longitude), place.isInside)
            << place.path << ' ' << place.latitude << ' ' << place.longitude;
    }
}
