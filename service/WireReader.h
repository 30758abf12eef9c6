/* The values of a request body, read one after another. */
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

class WireReader {
public:
    /* `bytes` is not copied: it must outlive the reader. */
    explicit WireReader(std::string_view bytes) : rest(bytes) {}

    /* The next little-endian int32; none, and nothing is taken, when fewer than 4 bytes are left. */
    std::optional<int32_t> ReadInt32();

    /* How many bytes are left. */
    [[nodiscard]] size_t Remaining() const { return rest.size(); }

private:
    std::string_view rest;
};
