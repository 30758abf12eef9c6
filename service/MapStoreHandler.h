/* The map shop's CGI program: what maps there are in the boxes asked for. */
#pragma once

#include <cstdint>
#include <string_view>

#include "CgiReply.h"
#include "MapCatalogue.h"

constexpr int32_t mostQueryItems = 1000;

/* The first int32 of every reply. After anything but success, nothing follows. */
enum class MapStoreStatus : int32_t {
    success = 0,
    noRequest = 1,       // the body is too short for a request code and a count
    unknownCode = 2,     // no request has this code
    badCount = 3,        // a negative count, or more than mostQueryItems
    badLength = 4,       // the body does not end with its last item
    badBox = 5,          // an item's south lies north of its north, or an edge is off the globe
    serviceFailure = 6,  // the database failed
};

/* Answers one request body, whatever it holds. */
CgiReply HandleMapStore(const MapCatalogue& catalogue, std::string_view request);
