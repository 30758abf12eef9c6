/* How the tables for exceptions name types, for the images' runtime. */
#pragma once

#include <cstdint>
#include <cstring>
#include <typeinfo>

/* The distance from there to a pointer to the type; 0: every type. */
inline const std::type_info* TypeAt(const unsigned char* place) {
    int32_t distance = 0;
    std::memcpy(&distance, place, sizeof distance);
    if (distance == 0) return nullptr;
    const std::type_info* type = nullptr;
    std::memcpy(&type, place + distance, sizeof type);
    return type;
}
