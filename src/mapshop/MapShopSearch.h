/* One search of the map shop: the exchange with the service, and its results, read once and in order. */
#pragma once

#include "Platform.h"

#include <list>

#include "LMOnline.h"

class ByteStream;

struct MapShopSearch {
public:
    /* Whether `items` and `count` describe an array of query items (16 bytes each) that can be sent: either 0
     * items, or items that are not null and whose bytes can be counted in 32 bits. */
    static bool AreItems(const void* items, int32_t count);

    /* Asks the service and reads its whole reply; blocks until then. An exchange that fails leaves the search
     * without results; of a reply that breaks off, or for which memory runs out, the results that arrived
     * whole are kept. Returns why not all was read, as LMOnline.h tells it; 0 when all was. A text of a
     * length that no text has is ERROR_INVALID_DATA: it is left empty, and what follows is read as if it were
     * the rest of the reply. */
    DWORD Run(const void* items, int32_t count) noexcept;

    /* Copies the next result into `record`: true. After the last one: false, and `record` stays as it was. */
    bool GetNext(MapShopResult& record);

    /* How many results the search has had. */
    [[nodiscard]] int64_t CountResults() const { return std::ssize(results); }

    /* The number that ends the reply; 0 when it was not read. */
    [[nodiscard]] int32_t FinalValue() const { return finalValue; }

private:
    /* Returns the status with which the reply begins. */
    int32_t ReadReply(ByteStream& reply);
    void ReadMap(ByteStream& reply);
    template <uint32_t capacity>
    void ReadText(ByteStream& reply, WCHAR (&field)[capacity]);

    std::list<MapShopResult> results;
    std::list<MapShopResult>::const_iterator cursor = results.end();
    int32_t finalValue = 0;
    bool isReadable = true; /* no text had a length that no text has */
};
