/* Files of this machine, as tests make and read them. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/* The bytes of a file; "no file" when there is none or it cannot be opened. */
std::string ContentOf(const std::wstring& path);

/* Makes a file anew. Throws std::runtime_error when that fails. */
void PutFile(const std::wstring& path, std::string_view bytes);

/* The size of a file without opening it, so that nobody is disturbed; 0 when there is none. */
uint64_t SizeOfFile(const std::wstring& path);

bool Exists(const std::wstring& path);

/* Waits until a file of that path is there; throws std::runtime_error when it does not come within 30 s. */
void WaitForFile(const std::wstring& path);
