/* A ByteStream that writes a new file. */
#pragma once

#include "transport/ByteStream.h"

#include "base/OwnedFile.h"

class FileWriteStream final : public ByteStream {
public:
    /* Makes or empties the file at `path`; `good` tells whether that succeeded. */
    explicit FileWriteStream(const WideString& path);

    /* Clears `good` when it meets with a failure. The runtime collects some kilobytes before it writes them
     * to the file: that this fails may show at a later Write, or only at Flush. Writes nothing when `good` is
     * false. */
    void Write(const void* data, uint32_t size) override;

    /* Writes to the file what was collected, and clears `good` when that fails: `good` after it tells that
     * all bytes so far are in the file. Without it, this happens when the stream is destroyed, and nobody is
     * told. Does nothing when `good` is false. */
    void Flush();

    /* Clears `good` and returns false. */
    bool Read(void* data, uint32_t size) override;

private:
    FileHandle file;
};
