/* The reference service that runs beside the tests. */
#pragma once

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "Platform.h"

inline constexpr WCHAR serviceHost[] = TEXT("online.orvande.example");

/* The port of a service with map files, which ORVANDE_TEST_MAPS_PORT names. The tests make its accounts. */
inline uint16_t PortOfService() {
    const char* const port = std::getenv("ORVANDE_TEST_MAPS_PORT");
    if (port == nullptr) throw std::runtime_error("ORVANDE_TEST_MAPS_PORT is not set");
    return static_cast<uint16_t>(std::strtoul(port, nullptr, 10));
}
