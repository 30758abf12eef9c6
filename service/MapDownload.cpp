#include "MapDownload.h"

#include <httplib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "ByteRange.h"
#include "Log.h"
#include "MapFolder.h"

namespace {

constexpr size_t pieceSize = 65536;
constexpr const char* contentType = "application/octet-stream";

ByteRange WantedRange(const httplib::Request& request, uint64_t size) {
    // An If-Range header is never fulfilled, because the files have no tags and no dates here.
    const bool isForAll = request.method != "GET" || request.has_header("If-Range");
    return isForAll ? ByteRange{} : ByteRangeOf(request.get_header_value("Range"), size);
}

struct Transfer {
    std::shared_ptr<const MapReader> file;
    std::string name;
    uint64_t first = 0;
    uint64_t length = 0;
    uint64_t sent = 0;
};

bool SendPiece(Transfer& transfer, size_t offset, size_t rest, httplib::DataSink& sink) {
    std::array<char, pieceSize> piece{};
    const size_t count =
        transfer.file->Read(transfer.first + offset, {piece.data(), std::min(rest, piece.size())});
    if (count == 0 || !sink.write(piece.data(), count)) return false;
    transfer.sent += count;
    return true;
}

void SendBytes(Transfer started, bool isHead, httplib::Response& response) {
    if (started.length == 0) {
        // The HTTP library takes a content provider of length 0 for one of unknown length.
        response.set_content("", contentType);
        return;
    }
    const auto transfer = std::make_shared<Transfer>(std::move(started));
    response.set_content_provider(
        transfer->length, contentType,
        [transfer](size_t offset, size_t rest, httplib::DataSink& sink) {
            return SendPiece(*transfer, offset, rest, sink);
        },
        // The parameter is not used: it is true even for a transfer that the end of the service broke off.
        [transfer, isHead](bool) {
            if (isHead || transfer->sent == transfer->length) return;
            LogLine(transfer->name + ": broken off after " + std::to_string(transfer->sent) + " of " +
                    std::to_string(transfer->length) + " bytes");
        });
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
    const bool isHead = request.method == "HEAD";
    response.set_header("Accept-Ranges", "bytes");
    switch (range.kind) {
        case RangeKind::whole:
            response.status = 200;
            SendBytes({std::move(file), name, 0, size}, isHead, response);
            break;
        case RangeKind::part:
            response.status = 206;
            response.set_header("Content-Range", "bytes " + std::to_string(range.first) + '-' +
                                                     std::to_string(range.first + range.length - 1) + '/' +
                                                     std::to_string(size));
            SendBytes({std::move(file), name, range.first, range.length}, isHead, response);
            break;
        case RangeKind::unsatisfiable:
            response.status = 416;
            response.set_header("Content-Range", "bytes */" + std::to_string(size));
    }
}
