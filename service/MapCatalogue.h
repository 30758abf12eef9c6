/* The maps that the service offers, in its database. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <span>
#include <stdexcept>
#include <vector>

#include "Box.h"
#include "Database.h"
#include "MapRecord.h"
#include "MapSource.h"

/* Why a catalogue cannot be used: one sentence for whoever started the service. */
class CatalogueError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* May be used from several threads at once; one search runs after another. A search throws DatabaseError when
 * the database fails under it. */
class MapCatalogue {
public:
    /* The database in the folder; others may keep tables of their own in it. */
    static constexpr const char* fileName = "catalogue.db";

    /* Opens the database in `folder`. Makes the folder, and fills a catalogue that is missing or empty from
     * `source`: all of it, or, when that is interrupted, nothing. A catalogue that is there keeps its maps.
     * Throws CatalogueError when the folder or the database cannot be used, is damaged, belongs to another
     * program, or was filled with other contents than those of `source`. */
    MapCatalogue(const std::filesystem::path& folder, const MapSource& source);

    /* The maps that meet at least one of the boxes, each once; every map when there is no box. Edges belong
     * to boxes: touching is meeting. The boxes must be on the globe. In the order of the names, then of the
     * paths, by code point. */
    [[nodiscard]] std::vector<MapRecord> Search(std::span<const Box> boxes) const;

    /* The first maps in the same order, `most` of them or fewer. */
    [[nodiscard]] std::vector<MapRecord> First(int32_t most) const;

    /* How many maps there are. */
    [[nodiscard]] int32_t Count() const;

private:
    mutable std::mutex oneAtATime;
    Database database;
};
