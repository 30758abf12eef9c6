/* Text for the outputs. */
#pragma once

#include <string>
#include <string_view>

/* The text in UTF-8. */
std::string Utf8Of(std::wstring_view text);
