#include "transport/ByteStream.h"

#include <algorithm>
#include <utility>

void ByteStream::WriteBytes(const void* data, uint32_t size) {
    Write(data, size);
    byteCount += size;
}

void ByteStream::WriteInt32(int32_t value) {
    WriteBytes(&value, sizeof value);
}

void ByteStream::WriteUnit(WCHAR unit) {
    WriteBytes(&unit, wideStrings ? 2 : 1);
}

void ByteStream::WriteString(const WideString& text) {
    WriteInt32(static_cast<int32_t>(text.size()));
    for (const WCHAR unit : text)
        WriteUnit(unit);
}

/* Reads bytes that have all been fetched ahead; false, with nothing done, when they have not. */
inline bool ByteStream::TakeFetched(void* data, uint32_t size) {
    if (size > readAvail - readPos) return false;
    memcpy(data, readBuffer + readPos, size);
    readPos += size;
    byteCount += size;
    return true;
}

bool ByteStream::ReadBytes(void* data, uint32_t size) {
    // A read of no bytes is one that finds none, and so fails.
    if (size > 0 && TakeFetched(data, size)) return true;
    const bool found = Read(data, size);
    good = good && found;
    byteCount += size;
    return found;
}

bool ByteStream::ReadInt32(int32_t& value) {
    return TakeFetched(&value, sizeof value) || ReadBytes(&value, sizeof value);
}

WCHAR ByteStream::ReadUnit() {
    WCHAR unit = 0;
    ReadBytes(&unit, wideStrings ? 2 : 1);
    return wideStrings ? unit : static_cast<WCHAR>(static_cast<int8_t>(unit));
}

/* Appends some of the units that have been fetched ahead, at most `most`, and returns how many; 0 when not
 * even one is there. */
uint32_t ByteStream::AppendFetchedUnits(WideString& text, uint32_t most) {
    constexpr uint32_t room = 128;
    const uint32_t count = std::min(std::min(most, room), (readAvail - readPos) / 2);
    if (count == 0 || !wideStrings) return 0;
    // The bytes may lie at an odd address, from which a device cannot read units.
    WCHAR units[room];
    const uint32_t size = 2 * count;
    memcpy(units, readBuffer + readPos, size);
    readPos += size;
    byteCount += size;
    text.append(units, count);
    return count;
}

bool ByteStream::ReadString(WideString& text) {
    text.clear();
    int32_t length = 0;
    ReadInt32(length);
    if (!good) return false;
    if (static_cast<uint32_t>(length) > longestString) return false;

    // A string with too little room would take twice as much, beside what it has. Moving its memory away to
    // be freed is less code than shrinking it.
    if (static_cast<size_t>(length) > text.capacity()) {
        static_cast<void>(WideString(std::move(text)));
        text.clear();
    }
    text.reserve(static_cast<size_t>(length));
    for (auto missing = static_cast<uint32_t>(length); missing > 0;) {
        missing -= AppendFetchedUnits(text, missing);
        if (missing == 0) return true;
        const WCHAR unit = ReadUnit();
        if (!good) return false;
        text.push_back(unit);
        --missing;
    }
    return true;
}

bool ByteStream::ReadFixedString(WCHAR* field, uint32_t capacity) {
    if (!ReadString(fixedText)) return false;
    // A unit 0 ends the text of a field, also when the string goes on.
    const size_t length = std::min<size_t>(wcslen(fixedText.c_str()), capacity - 1);
    memcpy(field, fixedText.c_str(), length * sizeof *field);
    memset(field + length, 0, (capacity - length) * sizeof *field);
    return true;
}
