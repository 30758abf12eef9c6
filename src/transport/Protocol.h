/* The numbers that the library and the service agree on (docs/wire-format.md). The reference service, too,
 * has them from here. */
#pragma once

#include <cstdint>

/* The codes of requests to mapstore.cgi. */
inline constexpr int32_t mapSearchCode = 101;

/* The bytes of an item of such a request, and the one type of entry that has fields in a reply. */
inline constexpr uint32_t mapItemSize = 16;
inline constexpr int32_t mapEntryType = 4;

/* The codes of requests to licapp.cgi. */
inline constexpr int32_t signInCode = 8;
inline constexpr int32_t accountCreationCode = 10;
