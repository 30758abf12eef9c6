#include "HexDump.h"

namespace {

constexpr size_t bytesOfLine = 16;

std::wstring Hexadecimal(uint64_t number, size_t digits) {
    std::wstring text;
    while (number != 0 || text.size() < digits) {
        text.insert(text.begin(), L"0123456789abcdef"[number % 16]);
        number /= 16;
    }
    return text;
}

}  // namespace

size_t OffsetDigits(uint64_t offset) {
    constexpr size_t least = 8;
    return Hexadecimal(offset, least).size();
}

std::wstring HexDumpLine(uint64_t offset, size_t digits, std::span<const uint8_t> bytes) {
    std::wstring line = Hexadecimal(offset, digits) + L" ";
    std::wstring text;
    for (size_t i = 0; i < bytesOfLine; ++i) {
        if (i % 8 == 0) line += L" ";
        line += i < bytes.size() ? Hexadecimal(bytes[i], 2) + L" " : L"   ";
        if (i < bytes.size())
            text += bytes[i] >= 0x20 && bytes[i] < 0x7F ? static_cast<wchar_t>(bytes[i]) : L'.';
    }
    return line + L" |" + text + L"|";
}
