/* The binary encoding of the service's requests and replies. A message is a run of values without tags or
 * framing: its reader must read what its writer wrote, in the same order. Integers are little-endian; a
 * string is an int32 number of code units and then the units, without a terminator. */
#pragma once

#include "text/WideString.h"

class ByteStream {
public:
    enum Mode : int32_t { notOpen = 0, writing = 1, reading = 2 };

    /* The longest string, in code units, that a reader accepts. */
    static constexpr uint32_t longestString = 100000;

    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    /* Writes `size` bytes. */
    virtual void Write(const void* data, uint32_t size) = 0;

    /* Reads `size` bytes. Each kind of stream says what its result means. */
    virtual bool Read(void* data, uint32_t size) = 0;

    /* 4 bytes, little-endian. */
    void WriteInt32(int32_t value);

    /* `size` bytes as they lie in memory. */
    void WriteBytes(const void* data, uint32_t size);

    /* The length in code units as an int32, then each unit as 2 bytes; without `wideStrings` as 1 byte, its
     * low 8 bits. */
    void WriteString(const WideString& text);

    /* The readers below clear `good` when a read fails, and add their size to `byteCount` whether or not it
     * does. Bytes that do not come leave their part of the destination as it was: set it beforehand to what
     * it shall be when a reply ends early. These two tell whether their own read succeeded, whatever `good`
     * was. */
    bool ReadInt32(int32_t& value);
    bool ReadBytes(void* data, uint32_t size);

    /* True: `text` is the string. False: its bytes ran out (`good` is false; `text` holds the units that
     * came) or its length is negative or above `longestString` (`good` stays, `text` is empty, none of its
     * units is consumed, so the stream is out of step). Without `wideStrings` a byte is widened with its
     * sign: 0xE9 becomes the unit 0xFFE9. Throws std::bad_alloc. */
    bool ReadString(WideString& text);

    /* As ReadString, into a field of `capacity` units (at least 1): a string of `capacity` units or more is
     * cut to `capacity` - 1, the rest of the field is 0. When the result is false the field stays as it
     * was. */
    bool ReadFixedString(WCHAR* field, uint32_t capacity);

    template <uint32_t capacity>
    bool ReadFixedString(WCHAR (&field)[capacity]) {
        return ReadFixedString(field, capacity);
    }

    Mode mode = notOpen;
    bool good = true;        /* false once a read or a write has failed */
    bool wideStrings = true; /* strings travel as 2-byte units, else as 1-byte units */
    uint32_t byteCount = 0;  /* bytes written or read since the stream was opened or turned to reading */

protected:
    ByteStream() = default;
    // Need not be virtual: the function that makes a stream destroys it, and knows its class.
    ~ByteStream() = default;

    /* Bytes that a kind of stream has fetched ahead. The readers above take what they need from here, and ask
     * Read, which takes from here first, too, only for what goes beyond. A kind without a buffer leaves these
     * as they are. */
    const uint8_t* readBuffer = nullptr;
    uint32_t readPos = 0;   /* the next unread byte of the buffer */
    uint32_t readAvail = 0; /* how many bytes of the buffer the last fetch filled */

private:
    void WriteUnit(WCHAR unit);
    bool TakeFetched(void* data, uint32_t size);
    WCHAR ReadUnit();
    uint32_t AppendFetchedUnits(WideString& text, uint32_t most);

    WideString fixedText; /* what ReadFixedString reads into: kept, so that not every call has to allocate */
};
