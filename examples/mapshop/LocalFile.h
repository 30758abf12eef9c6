/* The local files that downloads are kept in. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

/* Whether there is a file or folder at `path`. */
bool IsThere(const std::wstring& path);

/* Why no file can be put at `path` in place of what is there, as a sentence that names it; empty when one
 * can. Leaves everything as it was. */
std::wstring WhyNotReplaceable(const std::wstring& path);

/* Why no file can be written at `path`, likewise. One that is there is not touched. */
std::wstring WhyNotWritable(const std::wstring& path);

/* Makes the file at `path` hold `bytes`, in place of an older one. Why that failed, or nothing; then no file
 * is left. */
std::wstring SaveFile(const std::wstring& path, std::span<const uint8_t> bytes);
