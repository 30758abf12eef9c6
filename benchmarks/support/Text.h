/* Text for the inputs, and its conversion between encodings. */
#pragma once

#include <string>
#include <string_view>

#include "support/Random.h"

/* Words with spaces between them: as many as fit into `least` to `most` letters, never fewer than `least`. */
std::string SomeWords(Random& random, size_t least, size_t most);

/* One English word, or one that looks French and has a letter with an accent now and then (UTF-8). */
std::string_view EnglishWord(Random& random);
std::string_view FrenchWord(Random& random);

/* Text of the basic plane, from UTF-8 to UTF-16 and back. */
std::u16string ToUtf16(std::string_view text);
std::string ToUtf8(std::u16string_view text);

/* Replaces the file at `path` by `bytes`. Throws std::runtime_error when that fails. */
void WriteFile(const std::string& path, std::string_view bytes);

/* The bytes of the file at `path`. */
std::string ReadFile(const std::string& path);
