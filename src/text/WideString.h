/* The text type of the library: UTF-16 code units. Lengths and positions count units, never characters. */
#pragma once

#include "Platform.h"

#include <bit>
#include <string>
#include <string_view>

static_assert(std::endian::native == std::endian::little,
              "units and numbers lie in messages and files as they lie in memory");

using WideString = std::basic_string<WCHAR>;
using WideStringView = std::basic_string_view<WCHAR>;
