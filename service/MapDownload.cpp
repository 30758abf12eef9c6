#include "MapDownload.h"

#include <httplib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "ByteRange.h"
#include "MapFolder.h"

namespace {

constexpr size_t pieceSize = 65536;
constexpr const char* contentType = "application/octet-stream";

ByteRange WantedRange(const httplib::Request& request, uint64_t size) {
    // Files have no tags and no dates here, so no condition on them holds.
    const bool isForAll = request.method != "GET" || request.has_header("If-Range");
    return isForAll ? ByteRange{} : ByteRangeOf(request.get_header_value("Range"), size);
}

void SendBytes(std::shared_ptr<const MapReader> file, uint64_t first, uint64_t length,
               httplib::Response& response) {
    if (length == 0) {
        // The library takes a provider of nothing for one of unknown length.
        response.set_content("", contentType);
        return;
    }
    const auto provide = [file = std::move(file), first](size_t offset, size_t rest,
                                                         httplib::DataSink& sink) {
        std::array<char, pieceSize> piece{};
        const size_t count = file->Read(first + offset, {piece.data(), std::min(rest, piece.size())});
        return count > 0 && sink.write(piece.data(), count);
    };
    response.set_content_provider(length, contentType, provide);
}

}  // namespace

void ReplyWithMap(const std::filesystem::path& folder, const std::string& name,
                  const httplib::Request& request, httplib::Response& response) {
    std::shared_ptr<const MapReader> file = MapReader::Open(folder, name);
    if (file == nullptr) {
        response.status = 404;
        return;
    }
    const uint64_t size = file->Size();
    const ByteRange range = WantedRange(request, size);
    response.set_header("Accept-Ranges", "bytes");
    switch (range.kind) {
        case RangeKind::whole:
            response.status = 200;
            SendBytes(std::move(file), 0, size, response);
            break;
        case RangeKind::part:
            response.status = 206;
            response.set_header("Content-Range", "bytes " + std::to_string(range.first) + '-' +
                                                     std::to_string(range.first + range.length - 1) + '/' +
                                                     std::to_string(size));
            SendBytes(std::move(file), range.first, range.length, response);
            break;
        case RangeKind::unsatisfiable:
            response.status = 416;
            response.set_header("Content-Range", "bytes */" + std::to_string(size));
    }
}
