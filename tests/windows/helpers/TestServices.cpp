#include "helpers/TestServices.h"

#include <cstdlib>
#include <stdexcept>

std::string Told(const char* name) {
    const char* const value = std::getenv(name);
    if (value == nullptr) throw std::runtime_error(std::string(name) + " is not set");
    return value;
}

uint16_t PortTold(const char* name) {
    return static_cast<uint16_t>(std::stoul(Told(name)));
}
