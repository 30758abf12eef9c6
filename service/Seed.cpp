#include "Seed.h"

#include <cmath>
#include <iterator>
#include <string_view>

namespace {

struct Region {
    std::string_view name;
    double south, west, north, east;  // degrees
    int32_t kilobytes;
    std::string_view path;
    std::string_view description;
};

// clang-format off
constexpr Region regions[] = {
    // Europe
    {"Azores (Açores)", 36.934, -31.287, 39.728, -25.011, 1240, "/maps/azores.map",
     "Nine volcanic islands in the middle of the Atlantic, from Flores in the west to Santa Maria in the "
     "east."},
    {"Bavaria (Bayern)", 47.270, 8.976, 50.565, 13.840, 21870, "/maps/bavaria.map",
     "From the Franconian vineyards to the Alps, with Munich, Nürnberg and Würzburg down to the last farm "
     "track."},
    {"Catalonia (Catalunya)", 40.522, 0.159, 42.862, 3.333, 11360, "/maps/catalonia.map",
     "The north-east of Spain: Barcelona, the Costa Brava and the valleys of the eastern Pyrenees."},
    {"Corsica (Corse)", 41.365, 8.544, 43.018, 9.560, 2310, "/maps/corsica.map",
     "The mountain in the sea, with its winding coast roads and the long-distance path GR 20."},
    {"Crete (Κρήτη)", 34.932, 23.517, 35.687, 26.322, 2980, "/maps/crete.map",
     "Greece's largest island, from Χανιά to Σητεία: towns, gorges and mountain villages."},
    {"Croatia (Hrvatska)", 42.415, 13.501, 46.547, 19.410, 10420, "/maps/croatia.map",
     "The Dalmatian coast with more than a thousand islands, Istria, and the plains around Zagreb and "
     "Slavonski Brod."},
    {"Denmark (Danmark)", 54.568, 8.094, 57.752, 15.151, 15730, "/maps/denmark.map",
     "Jylland, Fyn, Sjælland and the smaller islands, Bornholm included, with bridges and ferry lines."},
    {"Estonia (Eesti)", 57.515, 21.832, 59.672, 28.187, 6850, "/maps/estonia.map",
     "Tallinn, Tartu and Pärnu, the islands of Saaremaa and Hiiumaa, and the forest roads between them."},
    {"Iceland (Ísland)", 63.396, -24.540, 66.565, -13.501, 4120, "/maps/iceland.map",
     "The ring road, the highland tracks with their fords, and the streets of Reykjavík and Akureyri."},
    {"Île-de-France", 48.120, 1.446, 49.242, 3.560, 9940, "/maps/ile-de-france.map",
     "Paris and the region around it, street by street, from Versailles to Fontainebleau and the Vexin."},
    {"Ireland (Éire)", 51.446, -10.478, 55.386, -5.992, 8760, "/maps/ireland.map",
     "The Republic of Ireland from Malin Head to Mizen Head, with every boreen of Connemara and Kerry."},
    {"Netherlands (Nederland)", 50.747, 3.349, 53.559, 7.199, 22640, "/maps/netherlands.map",
     "All twelve provinces of the European Netherlands, with the cycle paths and the Wadden islands."},
    {"Portugal", 36.965, -9.499, 42.155, -6.204, 14870, "/maps/portugal.map",
     "Mainland Portugal from the Minho to the Algarve, with full street maps of Lisboa, Porto and Évora."},
    {"Rockall", 57.595, -13.688, 57.597, -13.686, 1, "/maps/rockall.map",
     "A single rock in the Atlantic, as far from any road as can be; one byte is enough for it."},
    {"Scotland (Alba)", 54.633, -8.650, 60.861, -0.724, 13290, "/maps/scotland.map",
     "The Lowlands, the Highlands and the islands as far as Shetland and St Kilda."},
    {"Switzerland (Schweiz, Suisse, Svizzera)", 45.820, 5.956, 47.801, 10.468, 12580, "/maps/switzerland.map",
     "All twenty-six cantons with roads, passes and railways, from Genève to the Engadin."},

    // Africa
    {"Botswana", -26.892, 19.978, -17.781, 29.350, 3470, "/maps/botswana.map",
     "The Okavango delta, the Kalahari and the eastern towns along the railway, with tracks and waterholes."},
    {"Côte d'Ivoire", 4.343, -8.621, 10.727, -2.507, 4680, "/maps/cote-d-ivoire.map",
     "From the lagoons of Abidjan to the savanna of Korhogo, with the trunk roads to all its neighbours."},
    {"Egypt", 21.994, 24.687, 31.657, 36.899, 9150, "/maps/egypt.map",
     "The Nile valley and delta, the oases of the western desert, Sinai and the Red Sea coast."},
    {"Kenya", -4.677, 33.888, 5.031, 41.885, 6390, "/maps/kenya.map",
     "Nairobi, Mombasa and Kisumu, the Rift Valley lakes and the tracks of the national parks."},
    {"Madagascar (Madagasikara)", -25.599, 43.223, -11.944, 50.504, 4210, "/maps/madagascar.map",
     "The whole island with its few paved roads and many tracks, from Antsiranana to Tôlanaro."},
    {"Réunion", -21.371, 55.226, -20.861, 55.853, 1080, "/maps/reunion.map",
     "The island's coast roads and the footpaths of the three cirques: Cilaos, Mafate and Salazie."},

    // The South Atlantic
    {"Bouvet Island (Bouvetøya)", -54.463, 3.285, -54.386, 3.434, 0, "/maps/bouvet-island.map",
     "Ice, and nobody there: no road, no path, no house. Its map is an empty file."},

    // Asia
    {"Georgia (საქართველო)", 41.044, 39.987, 43.576, 46.695, 4030, "/maps/georgia.map",
     "From Batumi on the Black Sea to the vineyards of Kakheti, with the passes of the Greater Caucasus."},
    {"Hokkaidō (北海道)", 41.401, 139.765, 45.522, 145.825, 10110, "/maps/hokkaido.map",
     "Japan's northern island: Sapporo, Hakodate and Asahikawa, the national parks and the Shiretoko "
     "peninsula."},
    {"Java (Jawa)", -8.779, 105.216, -5.880, 114.627, 18450, "/maps/java.map",
     "The most populous island of the world, from Merak to Banyuwangi, with Jakarta, Bandung and Surabaya."},
    {"Jordan", 29.189, 34.950, 33.372, 39.293, 2760, "/maps/jordan.map",
     "Amman and Irbid, the King's Highway, Petra and Wadi Rum down to the gulf at Aqaba."},
    {"Nepal", 26.344, 80.030, 30.417, 88.171, 5320, "/maps/nepal.map",
     "The Terai, the Kathmandu valley and the trekking routes around Annapurna and Sagarmatha."},
    {"Sri Lanka", 5.924, 79.656, 9.830, 81.892, 5540, "/maps/sri-lanka.map",
     "Colombo, Kandy and the tea country, the ancient cities and the whole coast with its lighthouses."},

    // North and Central America, the Caribbean
    {"Alaska", 51.229, 172.459, 71.353, -129.981, 7890, "/maps/alaska.map",
     "The largest of the United States; its Aleutian chain reaches across the 180th meridian, and so does "
     "this map."},
    {"California", 32.534, -124.411, 42.010, -114.134, 65536, "/maps/california.map",
     "From the redwoods to the Mexican border, with every street of Los Angeles, San Francisco and San "
     "José."},
    {"Costa Rica", 8.034, -85.946, 11.210, -82.561, 3160, "/maps/costa-rica.map",
     "San José and the central valley, both coasts, and the ways into the national parks."},
    {"Cuba", 19.827, -84.949, 23.266, -74.133, 5870, "/maps/cuba.map",
     "La Habana, Camagüey and Santiago de Cuba, the Carretera Central and the cays along the coast."},
    {"Québec", 44.991, -79.764, 62.583, -57.105, 19960, "/maps/quebec.map",
     "The province from Montréal and the Gaspésie to the communities of Nunavik that no road reaches."},

    // South America
    {"Galápagos Islands", -1.401, -92.012, 1.664, -89.253, 690, "/maps/galapagos.map",
     "Ecuador's islands in the Pacific with landing places, trails and the few roads of the inhabited ones."},
    {"Paraguay", -27.588, -62.650, -19.286, -54.243, 4490, "/maps/paraguay.map",
     "Asunción, Encarnación and Ciudad del Este, and the straight roads of the Chaco."},
    {"Uruguay", -34.974, -58.438, -30.096, -53.109, 4350, "/maps/uruguay.map",
     "Montevideo, the beaches as far as Chuy, and the cattle country up to Artigas and Paysandú."},

    // Oceania
    {"Fiji (Viti)", -20.672, 176.850, -16.121, -178.214, 1330, "/maps/fiji.map",
     "Viti Levu, Vanua Levu, Taveuni, the Yasawa and the Lau islands; the map runs across the 180th "
     "meridian."},
    {"South Island (Te Waipounamu)", -46.682, 166.467, -40.501, 174.327, 7240, "/maps/south-island.map",
     "New Zealand's larger island: Christchurch and Dunedin, the Southern Alps, Fiordland and the "
     "Marlborough Sounds."},
    {"Tasmania (lutruwita)", -43.641, 144.604, -40.640, 148.363, 3050, "/maps/tasmania.map",
     "Hobart, Launceston and Devonport, the Overland Track, and the wild south-west."},
};
// clang-format on

struct RegionFile {
    std::string_view name;
    uint64_t size;
};

constexpr RegionFile files[] = {
    {"azores.map", 1269041},  {"bouvet-island.map", 0}, {"california.map", 64 << 20},
    {"corsica.map", 2365440}, {"fiji.map", 1361000},    {"galapagos.map", 706559},
    {"reunion.map", 1105500}, {"rockall.map", 1},
};

int32_t Units(double degrees) {
    return static_cast<int32_t>(std::lround(degrees * unitsPerDegree));
}

MapRecord RecordOf(const Region& region) {
    MapRecord map;
    map.name = region.name;
    map.kilobytes = region.kilobytes;
    map.path = region.path;
    map.description = region.description;
    map.box = {Units(region.south), Units(region.west), Units(region.north), Units(region.east)};
    return map;
}

}  // namespace

MapSource RegionsOfTheWorld() {
    return {"the regions of the world", static_cast<int32_t>(std::size(regions)),
            [](int32_t position) { return RecordOf(regions[position]); }};
}

std::vector<MapFile> FilesOfTheWorld() {
    std::vector<MapFile> made;
    for (const RegionFile& file : files)
        made.push_back({std::string(file.name), file.size});
    return made;
}
