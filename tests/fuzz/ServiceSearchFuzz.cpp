/* Requests for a search, which anybody may send to the service. The input is the request. */
#include <iterator>
#include <set>

#include "FuzzInput.h"
#include "MapStoreHandler.h"
#include "ReplyReading.h"
#include "service/TemporaryFolder.h"

namespace {

/* At the ends of the globe, and where boxes touch. */
constexpr Box covered[] = {
    {0, 0, 0, 0},
    {-9000000, -18000000, 9000000, 18000000},
    {1000000, 17000000, 2000000, 18000000},
    {1000000, -18000000, 2000000, -17000000},
    {3000000, 18000000, 4000000, 18000000},
    {3000000, -18000000, 4000000, -18000000},
    {-2000000, 17900000, -1000000, -17900000},
    {4580000, 590000, 4790000, 1050000},
    {4790000, 1050000, 4900000, 1100000},
    {9000000, -100, 9000000, 100},
};
constexpr auto mapCount = static_cast<int32_t>(std::size(covered));

MapRecord MapAt(int32_t position) {
    const std::string name = std::to_string(position);
    return {name, position, "/maps/" + name + ".map", "", covered[position]};
}

bool IsOnTheGlobe(const Box& box) {
    return box.south >= -9000000 && box.south <= box.north && box.north <= 9000000 &&
           std::max(std::abs(int64_t{box.west}), std::abs(int64_t{box.east})) <= 18000000;
}

/* Whether the box holds the meridian; 180 degrees east and west are one. */
bool Holds(const Box& box, int32_t longitude) {
    const auto holds = [&box](int32_t at) {
        return box.west <= box.east ? box.west <= at && at <= box.east : box.west <= at || at <= box.east;
    };
    return holds(longitude) || (std::abs(longitude) == 18000000 && holds(-longitude));
}

bool Meet(const Box& one, const Box& other) {
    if (one.south > other.north || other.south > one.north) return false;
    return Holds(one, other.west) || Holds(one, other.east) || Holds(other, one.west) ||
           Holds(other, one.east);
}

struct Request {
    MapStoreStatus status = MapStoreStatus::success;
    std::vector<Box> boxes;
};

Request ReadRequest(const std::string& bytes) {
    ReplyReading reading(bytes);
    if (bytes.size() < 8) return {MapStoreStatus::noRequest, {}};
    if (reading.Int32(0) != 101) return {MapStoreStatus::unknownCode, {}};
    const int32_t count = reading.Int32(0);
    if (count < 0 || count > 1000) return {MapStoreStatus::badCount, {}};
    if (bytes.size() != 8 + 16 * static_cast<size_t>(count)) return {MapStoreStatus::badLength, {}};
    Request request;
    for (int32_t item = 0; item < count; ++item) {
        Box& box = request.boxes.emplace_back();
        for (int32_t* const edge : {&box.south, &box.west, &box.north, &box.east})
            *edge = reading.Int32(0);
        if (!IsOnTheGlobe(box)) return {MapStoreStatus::badBox, {}};
    }
    return request;
}

class ServiceSearch final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        const std::string body = FuzzInput(bytes).TakeRest();
        const Request request = ReadRequest(body);
        const CgiReply reply = HandleMapStore(catalogue, body);
        ReplyReading reading(reply.body);
        Require(reading.Int32(-1) == static_cast<int32_t>(request.status), "the status tells what is wrong");
        Require(reply.refusal.empty() == (request.status == MapStoreStatus::success), "refusals are logged");
        if (request.status == MapStoreStatus::success)
            RequireMaps(request.boxes, reading);
        else
            Require(reply.body.size() == 4, "nothing follows a refusal");
    }

private:
    void RequireMaps(const std::vector<Box>& boxes, ReplyReading& reading) const {
        std::set<std::u16string> wanted;
        for (int32_t position = 0; position < mapCount; ++position) {
            const MapRecord map = MapAt(position);
            const bool isMet = std::ranges::any_of(boxes, [&](const Box& box) { return Meet(box, map.box); });
            if (boxes.empty() || isMet) wanted.emplace(map.path.begin(), map.path.end());
        }
        std::set<std::u16string> found;
        const int32_t count = reading.Int32(0);
        for (int32_t entry = 0; entry < count && reading.IsGood(); ++entry) {
            Require(reading.Int32(0) == 4, "every entry is a map");
            reading.Text(199);
            reading.Int32(0);
            Require(found.insert(reading.Text(99)).second, "no map comes twice");
            reading.Text(999);
        }
        Require(found == wanted, "the maps are those that meet a box");
        Require(reading.Int32(0) == mapCount, "the final value is the number of all maps");
        Require(reading.IsWhole(), "the reply is whole");
    }

    TemporaryFolder folder;
    MapCatalogue catalogue{folder.Path(), {"maps at edges", mapCount, MapAt}};
};

const bool isAdded = AddFuzzTarget<ServiceSearch>("ServiceSearch");

}  // namespace
