/* The local files that downloads are kept in. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

/* Whether there is a file or folder at `path`. */
bool IsThere(const std::wstring& path);

/* Why no file can be put at `path` in place of what is there, as a sentence that names `path`; empty when one
 * can. Changes nothing. */
std::wstring WhyNotReplaceable(const std::wstring& path);

/* Why no file can be written at `path`, in the same form. A file that is there is not touched. */
std::wstring WhyNotWritable(const std::wstring& path);

/* Writes `bytes` to the file at `path`, which replaces an older one. Returns an empty text, or why that
 * failed; then no file is left. */
std::wstring SaveFile(const std::wstring& path, std::span<const uint8_t> bytes);
