/* A ByteStream over bytes in memory, which shows every call: for tests of the encoding. */
#pragma once

#include "transport/ByteStream.h"

#include <string>
#include <string_view>
#include <vector>

class MemoryStream final : public ByteStream {
public:
    MemoryStream() = default;
    explicit MemoryStream(std::string_view bytes) : contents(bytes) { mode = reading; }

    void Write(const void* data, uint32_t size) override {
        contents.append(static_cast<const char*>(data), size);
        writes.push_back(size);
    }

    /* As a reply is read: fewer bytes than asked for are a success, none is a failure. */
    bool Read(void* data, uint32_t size) override {
        const size_t some = contents.copy(static_cast<char*>(data), size, position);
        position += some;
        return some > 0;
    }

    [[nodiscard]] size_t Unread() const { return contents.size() - position; }

    std::string contents;
    size_t position = 0;
    std::vector<uint32_t> writes; /* the size of each Write */
};
