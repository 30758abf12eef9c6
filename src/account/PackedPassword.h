/* The form in which a password is saved: 16 bytes, one for each letter or digit, scrambled with a fixed key.
 * That only keeps a password from being read in passing. What the service's passwords do not need is lost:
 * case, anything but 0-9, A-Z and a-z, and what follows the 16th of those. */
#pragma once

#include "text/WideString.h"

#include <array>

using PackedPassword = std::array<uint8_t, 16>;

PackedPassword PackPassword(WideStringView password);

/* The password in the first `count` bytes (at most all 16), in lower case. Bytes that stand for no letter or
 * digit are left out. Throws std::bad_alloc. */
WideString UnpackPassword(const PackedPassword& packed, size_t count);
