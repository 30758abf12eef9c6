#include "WireReader.h"

std::optional<int32_t> WireReader::ReadInt32() {
    if (rest.size() < 4) return std::nullopt;
    uint32_t value = 0;
    for (size_t index = 4; index-- > 0;)
        value = value << 8 | static_cast<uint8_t>(rest[index]);
    rest.remove_prefix(4);
    return static_cast<int32_t>(value);
}
