/* Numbers as people read and write them. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

/* 1234567 as "1234567". */
std::wstring DecimalText(int64_t number);

/* 1234567 as "1,234,567". */
std::wstring GroupedDigits(int64_t number);

/* 1234567 as "1,234,567 bytes". */
std::wstring BytesText(int64_t bytes);

/* The number that `text` writes in decimal digits alone; nothing when there is anything else, or when it is
 * greater than 9223372036854775807. */
std::optional<int64_t> ParseCount(const std::wstring& text);
