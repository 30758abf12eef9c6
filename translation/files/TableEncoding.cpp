/* Which encoding a table has, and its lines. */
#include <algorithm>

#include "Utf16.h"
#include "files/TableFile.h"
#include "files/Utf8.h"

namespace {

constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";

bool IsLatin1(std::string_view bytes) {
    return std::ranges::none_of(bytes, [](char byte) {
        const auto value = static_cast<uint8_t>(byte);
        return value >= 0x80 && value <= 0x9F;
    });
}

size_t CountZeros(std::string_view bytes, size_t first) {
    size_t count = 0;
    for (size_t at = first; at < bytes.size(); at += 2)
        if (bytes[at] == 0) ++count;
    return count;
}

/* At least the English half of the records is ASCII. */
TableEncoding EncodingOfBytesWithZeros(std::string_view bytes) {
    const size_t enough = bytes.size() / 8 + 1;
    const size_t lowBytes = CountZeros(bytes, 0);
    const size_t highBytes = CountZeros(bytes, 1);
    if (highBytes >= enough && highBytes > lowBytes) return TableEncoding::Utf16WithoutMark;
    if (lowBytes >= enough && lowBytes > highBytes) return TableEncoding::Utf16BigEndian;
    return TableEncoding::Latin1;
}

TableEncoding EncodingOf(std::string_view bytes) {
    if (bytes.starts_with(utf16Mark)) return TableEncoding::Utf16;
    if (bytes.starts_with(utf16BigEndianMark)) return TableEncoding::Utf16BigEndian;
    if (bytes.starts_with(utf8Mark)) return IsUtf8(bytes) ? TableEncoding::Utf8 : TableEncoding::Unknown;
    const TableEncoding byZeros = EncodingOfBytesWithZeros(bytes);
    if (byZeros != TableEncoding::Latin1 || IsAscii(bytes)) return byZeros;
    if (IsUtf8(bytes)) return TableEncoding::Utf8;
    return IsLatin1(bytes) ? TableEncoding::Latin1 : TableEncoding::Unknown;
}

/* Whether a line or two have spoiled a file in UTF-8. */
bool IsMostlyUtf8(std::string_view bytes) {
    if (bytes.starts_with(utf8Mark)) return true;
    size_t good = 0;
    size_t bad = 0;
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, bytes.find('\n'));
        if (!IsAscii(line)) ++(IsUtf8(line) ? good : bad);
        bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
    }
    return good > bad;
}

WideString UnitsOf(std::string_view bytes, size_t lowByte) {
    WideString units;
    units.reserve(bytes.size() / 2);
    for (size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<uint8_t>(bytes[at + lowByte]);
        const auto high = static_cast<uint8_t>(bytes[at + 1 - lowByte]);
        units += static_cast<WCHAR>(high << 8 | low);
    }
    return units;
}

WideString UnitsOfBytes(std::string_view bytes) {
    WideString units;
    units.reserve(bytes.size());
    for (const char byte : bytes)
        units += static_cast<uint8_t>(byte);
    return units;
}

WideString Decoded(std::string_view bytes, TableEncoding encoding) {
    WideString units;
    switch (encoding) {
        case TableEncoding::Utf16:
        case TableEncoding::Utf16WithoutMark:
            units = UnitsOf(bytes, 0);
            break;
        case TableEncoding::Utf16BigEndian:
            units = UnitsOf(bytes, 1);
            break;
        case TableEncoding::Utf8:
            units = Utf16Of(bytes);
            break;
        case TableEncoding::Unknown:
            units = IsMostlyUtf8(bytes) ? Utf16Of(bytes) : UnitsOfBytes(bytes);
            break;
        case TableEncoding::Latin1:
            return UnitsOfBytes(bytes);
    }
    if (units.starts_with(u'\xFEFF')) units.erase(0, 1);
    return units;
}

bool IsUtf16(TableEncoding encoding) {
    return encoding == TableEncoding::Utf16 || encoding == TableEncoding::Utf16WithoutMark ||
           encoding == TableEncoding::Utf16BigEndian;
}

std::vector<WideString> LinesOf(WideStringView text) {
    std::vector<WideString> lines;
    lines.reserve(static_cast<size_t>(std::ranges::count(text, u'\n')) + 1);
    while (!text.empty()) {
        const size_t end = text.find(u'\n');
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == WideStringView::npos ? text.size() : end + 1);
    }
    return lines;
}

}  // namespace

TableText DecodeTable(std::string_view bytes) {
    TableText table;
    table.encoding = EncodingOf(bytes);
    table.hasHalfUnit = IsUtf16(table.encoding) && bytes.size() % 2 != 0;
    table.lines = LinesOf(Decoded(bytes, table.encoding));
    return table;
}
