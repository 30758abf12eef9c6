/* One map of the catalogue. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Box.h"

struct MapRecord {
    std::string name;       // UTF-8, as all texts here
    int32_t kilobytes = 0;  // size of the download
    std::string path;       // on the service's host, "/maps/..."; no two maps share one
    std::string description;
    Box box;  // what the map covers
};

/* How much of each text reaches an application, in UTF-16 code units; the rest would be cut off. */
constexpr size_t nameCapacity = 199;
constexpr size_t pathCapacity = 99;
constexpr size_t descriptionCapacity = 999;
