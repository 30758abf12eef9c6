#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

#include "MadeUpMaps.h"
#include "MapCatalogue.h"
#include "SampleMaps.h"
#include "Seed.h"
#include "TemporaryFolder.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class MapCatalogueFile : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path File() const { return folder.Path() / "catalogue.db"; }

    void Write(std::string_view bytes) const {
        std::ofstream(File(), std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    /* Why a catalogue cannot be opened. */
    [[nodiscard]] std::string Complaint(const std::filesystem::path& in, const MapSource& source) const {
        try {
            const MapCatalogue catalogue(in, source);
        } catch (const CatalogueError& error) {
            return error.what();
        }
        return "none";
    }

    TemporaryFolder folder;
    MapSource sample = SourceOf({SampleMap("b", {0, 0, 1, 1}), SampleMap("a", {2, 2, 3, 3})});
};

}  // namespace

TEST_F(MapCatalogueFile, FirstOpeningMakesTheFolderAndFillsTheCatalogue) {
    const std::filesystem::path nested = folder.Path() / "one" / "two";
    const MapCatalogue catalogue(nested, sample);
    EXPECT_EQ(catalogue.Count(), 2);
    EXPECT_TRUE(std::filesystem::exists(nested / "catalogue.db"));
}

TEST_F(MapCatalogueFile, SecondOpeningKeepsWhatIsThere) {
    { const MapCatalogue first(folder.Path(), sample); }
    Database(File()).Execute("UPDATE map SET name = 'renamed' WHERE name = 'a'");
    const MapCatalogue second(folder.Path(), sample);
    EXPECT_THAT(NamesOf(second.Search({})), ElementsAre("b", "renamed"));
}

TEST_F(MapCatalogueFile, EveryFieldSurvives) {
    const MapRecord map{"\xC3\x8Ele",
                        2147483647,
                        "/maps/x.map",
                        "\xF0\x9F\x97\xBA",
                        {-9000000, 18000000, 9000000, -18000000}};
    { const MapCatalogue first(folder.Path(), SourceOf({map})); }
    const std::vector<MapRecord> maps = MapCatalogue(folder.Path(), SourceOf({map})).Search({});
    ASSERT_EQ(maps.size(), 1u);
    EXPECT_EQ(maps[0].name, map.name);
    EXPECT_EQ(maps[0].kilobytes, map.kilobytes);
    EXPECT_EQ(maps[0].path, map.path);
    EXPECT_EQ(maps[0].description, map.description);
    EXPECT_EQ(maps[0].box, map.box);
}

TEST_F(MapCatalogueFile, InterruptedFillingLeavesNothingHalfDone) {
    MapSource failing = MadeUpMaps(5000);
    failing.at = [maps = MadeUpMaps(5000)](int32_t position) {
        if (position == 4999) throw std::runtime_error("interrupted");
        return maps.at(position);
    };
    EXPECT_THROW(MapCatalogue(folder.Path(), failing), std::runtime_error);
    EXPECT_EQ(MapCatalogue(folder.Path(), sample).Count(), 2);
}

TEST_F(MapCatalogueFile, EmptyFileIsFilled) {
    Write("");
    EXPECT_EQ(MapCatalogue(folder.Path(), sample).Count(), 2);
}

TEST_F(MapCatalogueFile, OtherContentsAreRefusedAndKept) {
    { const MapCatalogue first(folder.Path(), MadeUpMaps(3)); }
    EXPECT_THAT(Complaint(folder.Path(), RegionsOfTheWorld()),
                HasSubstr("already holds another catalogue (3 made-up maps, not the regions of the world)"));
    EXPECT_THAT(Complaint(folder.Path(), MadeUpMaps(4)), HasSubstr("(3 made-up maps, not 4 made-up maps)"));
    EXPECT_EQ(MapCatalogue(folder.Path(), MadeUpMaps(3)).Count(), 3);
}

TEST_F(MapCatalogueFile, FileThatIsNoDatabaseIsRefusedAndKept) {
    Write(std::string(5000, 'x'));
    EXPECT_THAT(Complaint(folder.Path(), sample),
                AllOf(HasSubstr(File().string()), HasSubstr("file is not a database")));
    EXPECT_EQ(std::filesystem::file_size(File()), 5000u);
}

TEST_F(MapCatalogueFile, DatabaseCutShortIsRefused) {
    { const MapCatalogue first(folder.Path(), MadeUpMaps(1000)); }
    std::filesystem::resize_file(File(), std::filesystem::file_size(File()) / 8192 * 4096);
    EXPECT_THAT(Complaint(folder.Path(), MadeUpMaps(1000)), HasSubstr(File().string()));
}

TEST_F(MapCatalogueFile, DatabaseWithAnOverwrittenPageIsRefusedAsDamaged) {
    { const MapCatalogue first(folder.Path(), MadeUpMaps(1000)); }
    std::fstream file(File(), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(static_cast<std::streamoff>(std::filesystem::file_size(File()) / 8192 * 4096));
    file << std::string(4096, '\x5A');
    file.close();
    EXPECT_THAT(Complaint(folder.Path(), MadeUpMaps(1000)), HasSubstr("is damaged: "));
}

TEST_F(MapCatalogueFile, DatabaseOfAnotherProgramIsRefusedAndKept) {
    Database(File()).Execute("CREATE TABLE theirs (x); INSERT INTO theirs VALUES (1)");
    EXPECT_THAT(Complaint(folder.Path(), sample), HasSubstr("is a database of another program"));
    EXPECT_NO_THROW(Database(File()).Execute("INSERT INTO theirs VALUES (2)"));
}

TEST_F(MapCatalogueFile, CatalogueOfAnotherVersionIsRefused) {
    { const MapCatalogue first(folder.Path(), sample); }
    Database(File()).Execute("PRAGMA user_version = 2");
    EXPECT_THAT(Complaint(folder.Path(), sample), HasSubstr("was made by another version of this service"));
}

TEST_F(MapCatalogueFile, FolderThatIsAFileIsRefused) {
    Write("");
    EXPECT_THAT(Complaint(File(), sample),
                HasSubstr("the data folder '" + File().string() + "' cannot be made"));
    EXPECT_THAT(Complaint(File() / "below", sample), HasSubstr("Not a directory"));
}

TEST_F(MapCatalogueFile, DatabaseThatIsAFolderIsRefused) {
    std::filesystem::create_directory(File());
    EXPECT_THAT(Complaint(folder.Path(), sample),
                HasSubstr("cannot be opened: unable to open database file"));
}

TEST_F(MapCatalogueFile, MapsThatCannotBeServedDoNotGetIn) {
    { const MapCatalogue first(folder.Path(), sample); }
    Database database(File());
    for (const char* change : {"name = ''", "path = '/maps/b.map'", "path = '/elsewhere/a.map'",
                               "kilobytes = -1", "kilobytes = 2147483648", "south = 4", "north = 9000001",
                               "west = -18000001", "east = 18000001", "east = 'x'", "description = NULL"}) {
        const std::string update = std::string("UPDATE map SET ") + change + " WHERE name = 'a'";
        EXPECT_THROW(database.Execute(update.c_str()), DatabaseError) << update;
    }
}
