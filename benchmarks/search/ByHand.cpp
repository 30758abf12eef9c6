/* What a good programmer writes who needs nothing but this one reply: it is decoded straight out of a buffer
 * of 256 bytes, and its records are used where they lie. */
#include "Platform.h"

#include <algorithm>
#include <cstring>
#include <list>

#include "search/SearchRow.h"

namespace {

class Decoder {
public:
    explicit Decoder(HINTERNET opened) : request(opened) {}

    bool Bytes(void* data, size_t size) {
        auto* to = static_cast<uint8_t*>(data);
        while (size > 0) {
            if (next == end && !Fill()) return false;
            const size_t some = std::min<size_t>(size, end - next);
            memcpy(to, buffer + next, some);
            next += some;
            to += some;
            size -= some;
        }
        return true;
    }

    bool Number(int32_t& number) { return Bytes(&number, sizeof number); }

    template <size_t capacity>
    bool Text(LMChar (&field)[capacity]) {
        int32_t length = 0;
        if (!Number(length) || length < 0) return false;
        const auto units = static_cast<size_t>(length);
        const size_t kept = std::min(units, capacity - 1);
        if (!Bytes(field, kept * sizeof *field)) return false;
        field[kept] = 0;
        return Skip((units - kept) * sizeof *field);
    }

private:
    bool Skip(size_t size) {
        for (uint8_t byte = 0; size > 0; --size) {
            if (!Bytes(&byte, 1)) return false;
        }
        return true;
    }

    bool Fill() {
        next = 0;
        DWORD received = 0;
        InternetReadFile(request, buffer, sizeof buffer, &received);
        end = received;
        return end > 0;
    }

    HINTERNET request;
    size_t next = 0;
    size_t end = 0;
    uint8_t buffer[256];
};

bool ReadMap(Decoder& decoder, MapShopResult& map) {
    return decoder.Text(map.text1) && decoder.Number(map.number) && decoder.Text(map.text2) &&
           decoder.Text(map.text3);
}

int32_t ReadReply(Decoder& decoder, std::list<MapShopResult>& maps) {
    int32_t status = -1;
    int32_t count = 0;
    if (!decoder.Number(status) || status != 0 || !decoder.Number(count)) return 0;
    for (int32_t type = 0; count > 0 && decoder.Number(type); --count) {
        if (type == 4 && !ReadMap(decoder, maps.emplace_back())) {
            maps.pop_back();
            return 0;
        }
    }
    int32_t last = 0;
    decoder.Number(last);
    return last;
}

struct ByHand {
    template <class Take>
    static int32_t Run(Take take) {
        const HINTERNET session =
            InternetOpenW(TEXT("agent"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
        const HINTERNET connection = InternetConnectW(session, TEXT("host"), INTERNET_DEFAULT_HTTP_PORT,
                                                      nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0);
        const HINTERNET request =
            HttpOpenRequestW(connection, TEXT("POST"), TEXT("path"), nullptr, nullptr, nullptr, 0, 0);
        uint8_t body[8] = {101};
        std::list<MapShopResult> maps;
        int32_t last = 0;
        if (HttpSendRequestW(request, nullptr, 0, body, sizeof body)) {
            Decoder decoder(request);
            last = ReadReply(decoder, maps);
        }
        InternetCloseHandle(request);
        InternetCloseHandle(connection);
        InternetCloseHandle(session);
        for (const MapShopResult& map : maps)
            take(map);
        return last;
    }
};

const Enter entered(mapEntries, "decoder by hand", MakeWork<SearchWork<ByHand>>);

}  // namespace
