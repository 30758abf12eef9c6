#include "transport/ByteStream.h"

#include <algorithm>

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

bool ByteStream::ReadBytes(void* data, uint32_t size) {
    byteCount += size;
    if (size > 0 && size <= readAvail - readPos) {
        memcpy(data, readBuffer + readPos, size);
        readPos += size;
        return true;
    }
    const bool found = Read(data, size);
    good = good && found;
    return found;
}

bool ByteStream::ReadInt32(int32_t& value) {
    return ReadBytes(&value, sizeof value);
}

WCHAR ByteStream::ReadUnit() {
    WCHAR unit = 0;
    ReadBytes(&unit, wideStrings ? 2 : 1);
    return wideStrings ? unit : static_cast<WCHAR>(static_cast<int8_t>(unit));
}

bool ByteStream::ReadString(WideString& text) {
    text.clear();
    int32_t length = 0;
    ReadInt32(length);
    if (!good) return false;
    if (static_cast<uint32_t>(length) > longestString) return false;

    text.reserve(static_cast<size_t>(length));
    for (auto missing = static_cast<uint32_t>(length); missing > 0;) {
        const uint32_t fetched = AppendFetchedUnits(text, missing);
        missing -= fetched;
        if (fetched > 0) continue;
        const WCHAR unit = ReadUnit();
        if (!good) return false;
        text.push_back(unit);
        --missing;
    }
    return true;
}

/* Appends some of the units that have been fetched ahead, at most `most`, and returns how many; 0 when not
 * even one is there. */
uint32_t ByteStream::AppendFetchedUnits(WideString& text, uint32_t most) {
    if (!wideStrings) return 0;
    // The bytes may lie at an odd address, from which a device cannot read units.
    WCHAR units[128];
    const auto room = static_cast<uint32_t>(std::size(units));
    const uint32_t count = std::min({most, room, (readAvail - readPos) / 2});
    if (count == 0) return 0;
    ReadBytes(units, 2 * count);
    text.append(units, count);
    return count;
}

bool ByteStream::ReadFixedString(WCHAR* field, uint32_t capacity) {
    if (!ReadString(fixedText)) return false;
    // A unit 0 ends the text of a field, also when the string goes on.
    const size_t length = std::min<size_t>(wcslen(fixedText.c_str()), capacity - 1);
    memcpy(field, fixedText.c_str(), length * sizeof *field);
    memset(field + length, 0, (capacity - length) * sizeof *field);
    return true;
}
