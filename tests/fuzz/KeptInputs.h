/* The inputs and words that are kept for a target, in files. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/* What a file holds; throws std::runtime_error when it cannot be read. */
std::string ReadInput(const std::filesystem::path& file);

/* The inputs of a folder, in the order of their names; none when there is no such folder. */
std::vector<std::string> ReadInputs(const std::filesystem::path& folder);

/* The words of a dictionary of libFuzzer: lines of "word", in which \xHH, \\ and \" stand for bytes; none
 * when there is no such file. Throws std::runtime_error for other lines, but for comments and empty ones. */
std::vector<std::string> ReadWords(const std::filesystem::path& file);
