/* A ByteStream that writes a new file. */
#pragma once

#include "transport/ByteStream.h"

#include "base/OwnedFile.h"

class FileWriteStream final : public ByteStream {
public:
    /* Makes or empties the file at `path`; `good` tells whether that succeeded. */
    explicit FileWriteStream(const WideString& path);

    /* Clears `good` when not all `size` bytes can be written. Writes nothing when `good` is false. */
    void Write(const void* data, uint32_t size) override;

    /* Clears `good` and returns false. */
    bool Read(void* data, uint32_t size) override;

private:
    FileHandle file;
};
