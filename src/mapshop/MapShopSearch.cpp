#include "mapshop/MapShopSearch.h"

#include <memory>
#include <new>

#include "base/Contained.h"
#include "base/LastError.h"
#include "base/Trace.h"
#include "transport/CgiRequest.h"
#include "transport/OnlineConfiguration.h"
#include "transport/Protocol.h"

namespace {

// A reply may announce two thousand million entries and end early. After this many entries in a row for which
// no byte arrives, the remaining ones are not read.
constexpr int32_t mostEmptyEntries = 1000;

}  // namespace

bool MapShopSearch::AreItems(const void* items, int32_t count) {
    if (count == 0) return true;
    // A negative count is one that is too large.
    return items != nullptr && static_cast<uint32_t>(count) <= UINT32_MAX / mapItemSize;
}

DWORD MapShopSearch::Run(const void* items, int32_t count) noexcept {
    CgiRequest request(serviceHost, TEXT("cgi-bin/mapstore.cgi"), true, false);
    int32_t status = 0;
    const auto exchange = [&] {
        request.WriteInt32(mapSearchCode);
        request.WriteInt32(count);
        request.WriteBytes(items, static_cast<uint32_t>(count) * mapItemSize);
        if (request.SendRequest()) status = ReadReply(request);
    };
    if (!RunContained(exchange)) return request.NoteFailure(ERROR_NOT_ENOUGH_MEMORY);
    const DWORD cause = request.GetCause(status);
    return cause == ERROR_SUCCESS && !isReadable ? DWORD{ERROR_INVALID_DATA} : cause;
}

int32_t MapShopSearch::ReadReply(ByteStream& reply) {
    // A status that cannot be read must not look like success.
    int32_t status = -1;
    reply.ReadInt32(status);
    if (status != 0) return status;

    int32_t entryCount = 0;
    reply.ReadInt32(entryCount);
    int32_t emptyEntries = 0;
    for (int32_t entry = 0; entry < entryCount; ++entry) {
        int32_t type = 0;
        emptyEntries = reply.ReadInt32(type) ? 0 : emptyEntries + 1;
        if (emptyEntries == mostEmptyEntries) break;
        // Entries of other types have no fields.
        if (type == mapEntryType) ReadMap(reply);
    }
    reply.ReadInt32(finalValue);
    return 0;
}

void MapShopSearch::ReadMap(ByteStream& reply) {
    // Read where it stays: a record is large, and most of it is empty.
    std::list<MapShopResult> read;
    MapShopResult& map = read.emplace_back();
    ReadText(reply, map.text1);
    reply.ReadInt32(map.number);
    ReadText(reply, map.text2);
    ReadText(reply, map.text3);
    if (!reply.good) return;
    results.splice(results.end(), read);
    cursor = results.begin();
}

template <uint32_t capacity>
void MapShopSearch::ReadText(ByteStream& reply, WCHAR (&field)[capacity]) {
    if (!reply.ReadFixedString(field)) isReadable = false;
}

bool MapShopSearch::GetNext(MapShopResult& record) {
    if (cursor == results.end()) return false;
    record = *cursor++;
    return true;
}

/* What LMOnline.h declares: arguments are checked, exceptions are stopped, and the cause of a failure is left
 * at the end, when nothing can change it any more. */

MapShopSearch* LM_CALL LMMapShopSearch(const void* items, int32_t count) {
    auto* const search = new (std::nothrow) MapShopSearch;
    DWORD cause = ERROR_NOT_ENOUGH_MEMORY;
    if (search != nullptr)
        cause = MapShopSearch::AreItems(items, count) ? search->Run(items, count) : LM_ERROR_BAD_ARGUMENT;
    if constexpr (isTraced)
        Trace(TEXT("search"), nullptr, search != nullptr ? search->CountResults() : -1, cause);
    return LeaveError(cause, search);
}

int32_t LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record) {
    if (search == nullptr || record == nullptr) return LeaveError(LM_ERROR_BAD_ARGUMENT, 0);
    const int32_t isThere = search->GetNext(*record) ? 1 : 0;
    return LeaveError(isThere != 0 ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS, isThere);
}

int32_t LM_CALL LMMapShopClose(MapShopSearch* search) {
    if (search == nullptr) return LeaveError(LM_ERROR_BAD_ARGUMENT, 0);
    const int32_t finalValue = std::unique_ptr<MapShopSearch>(search)->FinalValue();
    if constexpr (isTraced) Trace(TEXT("close"), nullptr, finalValue, ERROR_SUCCESS);
    return LeaveError(ERROR_SUCCESS, finalValue);
}
