/* Passwords, and the hashes that are kept of them. */
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "WireReader.h"

/* What counts of a typed password: its first 16 letters (A to Z) and digits, the letters in lower case. A
 * client that saves a password keeps no more of it. Wiped when it is destroyed. */
class Password {
public:
    explicit Password(const WireString& typed);
    Password(const Password&) = delete;
    Password& operator=(const Password&) = delete;
    ~Password();

    /* 0 to 16 ASCII letters and digits. */
    [[nodiscard]] std::string_view Counted() const { return {characters.data(), size}; }

private:
    std::array<char, 16> characters{};
    size_t size = 0;
};

/* A salted hash as one line of ASCII, different every time. Takes some hundredths of a second and 8 MiB; only
 * one is computed at a time. Throws std::runtime_error when there is no memory for it. */
std::string HashOf(const Password& password);

/* Whether the hash was made of the same password; false for what is no hash. As costly as HashOf. */
bool IsHashOf(const std::string& hash, const Password& password);
