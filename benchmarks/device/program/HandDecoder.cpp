#include "HandDecoder.h"

#include "Platform.h"

#include "LMOnline.h"

namespace {

/* The reply, read in pieces of 256 bytes as the library reads it. */
struct Reply {
    HINTERNET request;
    uint32_t next;
    uint32_t end;
    bool isCut;
    uint8_t buffer[256];
};

void Take(Reply& reply, void* to, uint32_t size) {
    auto* destination = static_cast<uint8_t*>(to);
    while (size > 0) {
        if (reply.next == reply.end) {
            DWORD received = 0;
            InternetReadFile(reply.request, reply.buffer, sizeof reply.buffer, &received);
            reply.next = 0;
            reply.end = received;
            if (received == 0) {
                reply.isCut = true;
                return;
            }
        }
        const uint32_t there = reply.end - reply.next;
        const uint32_t some = there < size ? there : size;
        memcpy(destination, reply.buffer + reply.next, some);
        reply.next += some;
        destination += some;
        size -= some;
    }
}

int32_t TakeInt32(Reply& reply) {
    uint8_t bytes[4] = {};
    Take(reply, bytes, sizeof bytes);
    return static_cast<int32_t>(bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 |
                                uint32_t{bytes[3]} << 24);
}

/* A text that fits; longer ones are no part of what is measured. */
void TakeText(Reply& reply, LMChar* field, uint32_t capacity) {
    const auto length = static_cast<uint32_t>(TakeInt32(reply));
    if (length >= capacity) {
        reply.isCut = true;
        return;
    }
    Take(reply, field, length * sizeof *field);
    memset(field + length, 0, (capacity - length) * sizeof *field);
}

struct Map {
    Map* next;
    MapShopResult result;
};

/* Each map in a block of its own, as it comes. */
int32_t TakeMaps(Reply& reply, Map*& first) {
    if (TakeInt32(reply) != 0) return -1;
    const int32_t count = TakeInt32(reply);
    Map** last = &first;
    for (int32_t i = 0; i < count; ++i) {
        if (TakeInt32(reply) != 4) return -1;
        auto* const map = static_cast<Map*>(malloc(sizeof(Map)));
        if (map == nullptr) return -1;
        map->next = nullptr;
        *last = map;
        last = &map->next;
        TakeText(reply, map->result.text1, 200);
        map->result.number = TakeInt32(reply);
        TakeText(reply, map->result.text2, 100);
        TakeText(reply, map->result.text3, 1000);
        if (reply.isCut) return -1;
    }
    TakeInt32(reply);
    return reply.isCut ? -1 : count;
}

/* Copies each map out, as an application does, and frees it. */
int32_t Deliver(Map* map) {
    int32_t delivered = 0;
    MapShopResult record;
    while (map != nullptr) {
        Map* const next = map->next;
        memcpy(&record, &map->result, sizeof record);
        // The copy must not be left out.
        asm volatile("" : : "r"(&record) : "memory");
        free(map);
        map = next;
        ++delivered;
    }
    return delivered;
}

}  // namespace

int32_t SearchByHand() {
    uint8_t body[8] = {101, 0, 0, 0, 0, 0, 0, 0};
    const HINTERNET session =
        InternetOpenW(TEXT("ZR_CgiClient-SP"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
    const HINTERNET connection =
        InternetConnectW(session, TEXT("online.orvande.example"), INTERNET_DEFAULT_HTTP_PORT, nullptr,
                         nullptr, INTERNET_SERVICE_HTTP, 0, 0);
    const HINTERNET request =
        HttpOpenRequestW(connection, TEXT("POST"), TEXT("cgi-bin/mapstore.cgi"), nullptr, nullptr, nullptr,
                         INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE, 0);
    Reply reply{};
    reply.request = request;
    Map* maps = nullptr;
    int32_t count = -1;
    if (HttpSendRequestW(request, nullptr, 0, body, sizeof body)) count = TakeMaps(reply, maps);
    InternetCloseHandle(request);
    InternetCloseHandle(connection);
    InternetCloseHandle(session);
    const int32_t delivered = Deliver(maps);
    return count == delivered ? count : -1;
}
