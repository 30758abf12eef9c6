/* What an application is to see of a search. */
#pragma once

#include <vector>

#include "hostile/ReplyModel.h"

struct SearchModel {
    explicit SearchModel(const Arrival& arrival) {
        ReplyModel reply(arrival);
        const int32_t status = reply.Int32(-1);
        if (status == 0) {
            ReadEntries(reply);
            finalValue = reply.Int32(0);
        }
        cause = reply.CauseOf(status);
        consumed = reply.consumed;
        shortfalls = reply.shortfalls;
    }

    std::vector<MapShopResult> maps;  // behind each text zeros
    int32_t finalValue = 0;
    DWORD cause = 0;
    size_t consumed = 0;
    size_t shortfalls = 0;

private:
    void ReadEntries(ReplyModel& reply) {
        const int32_t count = reply.Int32(0);
        int inVain = 0;
        for (int32_t n = 0; n < count && inVain < 1000; ++n) {
            const int32_t type = reply.Int32(0);
            inVain = reply.foundAny ? 0 : inVain + 1;
            if (type == 4 && inVain < 1000) ReadMap(reply);
        }
    }

    void ReadMap(ReplyModel& reply) {
        MapShopResult map{};
        Put(reply.Text(199), map.text1);
        map.number = reply.Int32(0);
        Put(reply.Text(99), map.text2);
        Put(reply.Text(999), map.text3);
        if (reply.isGood) maps.push_back(map);
    }

    static void Put(const std::u16string& text, LMChar* field) { std::copy(text.begin(), text.end(), field); }
};
