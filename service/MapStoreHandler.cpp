#include "MapStoreHandler.h"

#include <optional>
#include <string>
#include <vector>

#include "WireReader.h"
#include "WireWriter.h"
#include "transport/Protocol.h"

namespace {

CgiReply Refused(MapStoreStatus status, const std::string& why) {
    return RefusedReply(static_cast<int32_t>(status), why);
}

/* The next item; the reader must hold one. */
Box ReadBox(WireReader& reader) {
    Box box;
    for (int32_t* edge : {&box.south, &box.west, &box.north, &box.east})
        *edge = reader.ReadInt32().value();
    return box;
}

CgiReply Found(const std::vector<MapRecord>& maps, int32_t catalogueSize) {
    WireWriter writer;
    writer.WriteInt32(static_cast<int32_t>(MapStoreStatus::success));
    writer.WriteInt32(static_cast<int32_t>(maps.size()));
    for (const MapRecord& map : maps) {
        writer.WriteInt32(mapEntryType);
        writer.WriteString(map.name);
        writer.WriteInt32(map.kilobytes);
        writer.WriteString(map.path);
        writer.WriteString(map.description);
    }
    writer.WriteInt32(catalogueSize);
    return {writer.TakeBytes(), {}};
}

/* `count` boxes follow in the reader. */
CgiReply Search(const MapCatalogue& catalogue, int32_t count, WireReader& reader) {
    if (count < 0 || count > mostQueryItems)
        return Refused(MapStoreStatus::badCount, "a count of " + std::to_string(count));
    const auto items = static_cast<size_t>(count);
    if (reader.Remaining() != items * mapItemSize) {
        return Refused(MapStoreStatus::badLength,
                       std::to_string(reader.Remaining()) + " bytes for " + std::to_string(items) + " items");
    }
    std::vector<Box> boxes;
    for (size_t item = 0; item < items; ++item) {
        boxes.push_back(ReadBox(reader));
        if (!IsOnGlobe(boxes.back())) {
            return Refused(MapStoreStatus::badBox,
                           "item " + std::to_string(item + 1) + " is not a box on the globe");
        }
    }
    return Found(catalogue.Search(boxes), catalogue.Count());
}

}  // namespace

CgiReply HandleMapStore(const MapCatalogue& catalogue, std::string_view request) {
    WireReader reader(request);
    const std::optional<int32_t> code = reader.ReadInt32();
    const std::optional<int32_t> count = reader.ReadInt32();
    if (!code || !count) {
        return Refused(MapStoreStatus::noRequest, "a body of " + std::to_string(request.size()) + " bytes");
    }
    try {
        if (*code == mapSearchCode) return Search(catalogue, *count, reader);
    } catch (const DatabaseError& error) {
        return Refused(MapStoreStatus::serviceFailure, error.what());
    }
    return Refused(MapStoreStatus::unknownCode, "request code " + std::to_string(*code));
}
