/* A ByteStream that reads a file. */
#pragma once

#include "transport/ByteStream.h"

#include "base/OwnedFile.h"

class FileReadStream final : public ByteStream {
public:
    /* Opens the file at `path`; `good` tells whether that succeeded. */
    explicit FileReadStream(const WideString& path);

    /* Only clears `good`. */
    void Write(const void* data, uint32_t size) override;

    /* True when all `size` bytes were there, else `good` is cleared. False at once when `good` is false. */
    bool Read(void* data, uint32_t size) override;

private:
    FileHandle file;
};
