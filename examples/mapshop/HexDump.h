/* Shows bytes in hexadecimal. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

/* One line of a dump: `offset` in hexadecimal with at least `digits` digits, up to 16 bytes in hexadecimal,
 * and the same as text, with points for what is not printable ASCII. */
std::wstring HexDumpLine(uint64_t offset, size_t digits, std::span<const uint8_t> bytes);

/* How many hexadecimal digits `offset` has, 8 or more. */
size_t OffsetDigits(uint64_t offset);
