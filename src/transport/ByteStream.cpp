#include "transport/ByteStream.h"

void ByteStream::WriteBytes(const void* data, uint32_t size) {
    Write(data, size);
    byteCount += size;
}

void ByteStream::WriteInt32(int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    const uint8_t bytes[] = {static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8),
                             static_cast<uint8_t>(bits >> 16), static_cast<uint8_t>(bits >> 24)};
    WriteBytes(bytes, sizeof bytes);
}

void ByteStream::WriteUnit(WCHAR unit) {
    const uint8_t bytes[] = {static_cast<uint8_t>(unit), static_cast<uint8_t>(unit >> 8)};
    WriteBytes(bytes, wideStrings ? 2 : 1);
}

void ByteStream::WriteString(const WideString& text) {
    WriteInt32(static_cast<int32_t>(text.size()));
    for (const WCHAR unit : text)
        WriteUnit(unit);
}

bool ByteStream::ReadBytes(void* data, uint32_t size) {
    const bool found = Read(data, size);
    good = good && found;
    byteCount += size;
    return found;
}

bool ByteStream::ReadInt32(int32_t& value) {
    // A read that meets the end fills only some of the bytes; the others stay those of `value`.
    auto bits = static_cast<uint32_t>(value);
    uint8_t bytes[] = {static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8),
                       static_cast<uint8_t>(bits >> 16), static_cast<uint8_t>(bits >> 24)};
    const bool found = ReadBytes(bytes, sizeof bytes);
    bits = bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
    value = static_cast<int32_t>(bits);
    return found;
}

WCHAR ByteStream::ReadUnit() {
    uint8_t bytes[] = {0, 0};
    ReadBytes(bytes, wideStrings ? 2 : 1);
    if (wideStrings) return static_cast<WCHAR>(bytes[0] | bytes[1] << 8);
    return static_cast<WCHAR>(static_cast<int8_t>(bytes[0]));
}

bool ByteStream::ReadString(WideString& text) {
    text.clear();
    int32_t length = 0;
    ReadInt32(length);
    if (!good) return false;
    if (static_cast<uint32_t>(length) > longestString) return false;

    text.reserve(static_cast<size_t>(length));
    for (int32_t i = 0; i < length; ++i) {
        const WCHAR unit = ReadUnit();
        if (!good) return false;
        text.push_back(unit);
    }
    return true;
}

bool ByteStream::ReadFixedString(WCHAR* field, uint32_t capacity) {
    WideString text;
    if (!ReadString(text)) return false;
    wcsncpy(field, text.c_str(), capacity);
    field[capacity - 1] = 0;
    return true;
}
