/* The form in which a password is saved: 16 bytes, one a letter or digit, scrambled with a fixed key. It
 * keeps a password from being read in passing, no more, and loses what the service's passwords do not need:
 * case, anything but 0-9, A-Z and a-z, and what follows the 16th of those. */
#pragma once

#include "text/WideString.h"

#include <array>

using PackedPassword = std::array<uint8_t, 16>;

PackedPassword PackPassword(WideStringView password);

/* The password that the first `count` bytes give back, in lower case; at most all 16 count. Bytes that stand
 * for nothing give nothing. Throws std::bad_alloc. */
WideString UnpackPassword(const PackedPassword& packed, size_t count);
