#include "MapCatalogue.h"

#include <string>

namespace {

constexpr int32_t applicationId = 0x4F724D43;
constexpr int32_t schemaVersion = 1;

// The file's identity is written in the same transaction, so a file without it is empty or another program's.
constexpr const char* schema = R"(
    CREATE TABLE origin (contents TEXT NOT NULL) STRICT;
    CREATE TABLE map (
        id INTEGER PRIMARY KEY,
        name TEXT NOT NULL CHECK (length(name) BETWEEN 1 AND 199),
        kilobytes INTEGER NOT NULL CHECK (kilobytes BETWEEN 0 AND 2147483647),
        path TEXT NOT NULL UNIQUE CHECK (path GLOB '/maps/?*' AND length(path) <= 99),
        description TEXT NOT NULL CHECK (length(description) <= 999),
        south INTEGER NOT NULL CHECK (south BETWEEN -9000000 AND 9000000),
        west INTEGER NOT NULL CHECK (west BETWEEN -18000000 AND 18000000),
        north INTEGER NOT NULL CHECK (north BETWEEN south AND 9000000),
        east INTEGER NOT NULL CHECK (east BETWEEN -18000000 AND 18000000)
    ) STRICT;
    CREATE INDEX mapByName ON map (name, path);
    PRAGMA application_id = 0x4F724D43;
    PRAGMA user_version = 1;
)";

constexpr const char* insertMap =
    "INSERT INTO map (name, kilobytes, path, description, south, west, north, east)"
    " VALUES (?, ?, ?, ?, ?, ?, ?, ?)";

// The boxes asked for, in pieces that do not cross the antimeridian. Seen only by this connection.
constexpr const char* wantedTable =
    "PRAGMA temp_store = MEMORY;"
    "CREATE TEMP TABLE wanted (south INTEGER, west INTEGER, north INTEGER, east INTEGER)";
constexpr const char* insertWanted = "INSERT INTO wanted (south, west, north, east) VALUES (?, ?, ?, ?)";

constexpr const char* selectFirst =
    "SELECT name, kilobytes, path, description, south, west, north, east FROM map"
    " ORDER BY name, path LIMIT ?";

// A map whose west lies east of its east covers all longitudes but those between.
constexpr const char* selectWanted = R"(
    SELECT name, kilobytes, path, description, south, west, north, east FROM map
    WHERE EXISTS (
        SELECT 1 FROM wanted
        WHERE map.south <= wanted.north AND map.north >= wanted.south
          AND CASE WHEN map.west <= map.east
                   THEN map.west <= wanted.east AND map.east >= wanted.west
                   ELSE map.west <= wanted.east OR map.east >= wanted.west END)
    ORDER BY name, path
)";

std::filesystem::path MadeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw CatalogueError("the data folder '" + folder.string() + "' cannot be made: " + error.message());
    }
    return folder;
}

Database OpenedDatabase(const std::filesystem::path& file) {
    try {
        return Database(file);
    } catch (const DatabaseError& error) {
        throw CatalogueError("the catalogue '" + file.string() + "' cannot be opened: " + error.what());
    }
}

int32_t OneInt32(const Database& database, const char* sql) {
    Statement statement(database, sql);
    statement.Step();
    return statement.Int32(0);
}

std::string OneText(const Database& database, const char* sql) {
    Statement statement(database, sql);
    return statement.Step() ? statement.Text(0) : std::string();
}

bool IsEmpty(const Database& database) {
    return OneInt32(database, "PRAGMA application_id") == 0 &&
           OneInt32(database, "SELECT count(*) FROM sqlite_schema") == 0;
}

void BindBox(Statement& statement, int firstParameter, const Box& box) {
    statement.Bind(firstParameter, box.south);
    statement.Bind(firstParameter + 1, box.west);
    statement.Bind(firstParameter + 2, box.north);
    statement.Bind(firstParameter + 3, box.east);
}

void Fill(Database& database, const MapSource& source) {
    Transaction transaction(database);
    // Another process may have filled it while this one waited.
    if (!IsEmpty(database)) return;
    database.Execute(schema);
    Statement origin(database, "INSERT INTO origin (contents) VALUES (?)");
    origin.Bind(1, source.contents);
    origin.Run();
    Statement insert(database, insertMap);
    for (int32_t position = 0; position < source.count; ++position) {
        const MapRecord map = source.at(position);
        insert.Bind(1, map.name);
        insert.Bind(2, map.kilobytes);
        insert.Bind(3, map.path);
        insert.Bind(4, map.description);
        BindBox(insert, 5, map.box);
        insert.Run();
    }
    transaction.Commit();
}

void CheckIdentity(const Database& database, const std::string& file) {
    if (OneInt32(database, "PRAGMA application_id") != applicationId) {
        throw CatalogueError("'" + file + "' is a database of another program, not a map catalogue");
    }
    if (OneInt32(database, "PRAGMA user_version") != schemaVersion) {
        throw CatalogueError("the catalogue '" + file + "' was made by another version of this service");
    }
    const std::string defect = OneText(database, "PRAGMA quick_check(1)");
    if (defect != "ok") throw CatalogueError("the catalogue '" + file + "' is damaged: " + defect);
}

void CheckContents(const Database& database, const std::string& file, const std::string& wanted) {
    const std::string contents = OneText(database, "SELECT contents FROM origin");
    if (contents != wanted) {
        throw CatalogueError("'" + file + "' already holds another catalogue (" + contents + ", not " +
                             wanted + "); use another data folder");
    }
}

std::vector<MapRecord> AllRowsOf(Statement& select) {
    std::vector<MapRecord> maps;
    while (select.Step()) {
        MapRecord map;
        map.name = select.Text(0);
        map.kilobytes = select.Int32(1);
        map.path = select.Text(2);
        map.description = select.Text(3);
        map.box = {select.Int32(4), select.Int32(5), select.Int32(6), select.Int32(7)};
        maps.push_back(std::move(map));
    }
    return maps;
}

}  // namespace

MapCatalogue::MapCatalogue(const std::filesystem::path& folder, const MapSource& source)
    : database(OpenedDatabase(MadeFolder(folder) / fileName)) {
    const std::string file = (folder / fileName).string();
    try {
        if (IsEmpty(database)) Fill(database, source);
        CheckIdentity(database, file);
        CheckContents(database, file, source.contents);
        database.Execute(wantedTable);
    } catch (const DatabaseError& error) {
        throw CatalogueError("the catalogue '" + file + "' cannot be used: " + error.what());
    }
}

std::vector<MapRecord> MapCatalogue::Search(std::span<const Box> boxes) const {
    if (boxes.empty()) return First(INT32_MAX);
    const std::lock_guard lock(oneAtATime);
    Statement(database, "DELETE FROM wanted").Run();
    Statement insert(database, insertWanted);
    for (const Box& box : boxes) {
        for (const Box& piece : PiecesOf(box)) {
            BindBox(insert, 1, piece);
            insert.Run();
        }
    }
    Statement select(database, selectWanted);
    return AllRowsOf(select);
}

std::vector<MapRecord> MapCatalogue::First(int32_t most) const {
    const std::lock_guard lock(oneAtATime);
    Statement select(database, selectFirst);
    select.Bind(1, most);
    return AllRowsOf(select);
}

int32_t MapCatalogue::Count() const {
    const std::lock_guard lock(oneAtATime);
    return OneInt32(database, "SELECT count(*) FROM map");
}
