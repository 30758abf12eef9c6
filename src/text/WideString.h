/* The text type of the library: UTF-16 code units. Lengths and positions count units, never characters. */
#pragma once

#include "Platform.h"

#include <string>
#include <string_view>

using WideString = std::basic_string<WCHAR>;
using WideStringView = std::basic_string_view<WCHAR>;
